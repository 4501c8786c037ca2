#pragma once

#include <map>

#include "manufassly/TuvEUpdateManufAssly.h"
#include "planner/check/AssemblyCheck.h"
#include "tests/support/PlantTest.h"

namespace tests {

// A planner at a line of stations, with the update of assemblies switched on through the first one.
// Parts are made when they are first dropped; the assembly of station A is "MA-A".
class Line : public Desk {
 public:
  explicit Line(const Strings& stations = {"A", "B", "C"});

  embedded::Activity& At(const std::string& key) const;
  // The object through which the update was switched on.
  TuvEUpdateManufAssly& Update() const {
    return *static_cast<TuvEUpdateManufAssly*>(update_.Get());
  }

  embedded::ControlFlow& Link(const std::string& from, const std::string& to);
  // Nothing when there is such a flow already.
  void LinkOnce(const std::string& from, const std::string& to);
  void Unlink(const std::string& from, const std::string& to);
  embedded::MfgAssembly& Output(const std::string& station, const std::string& assembly = {});
  // The first output.
  void RemoveOutput(const std::string& station);
  void Drop(const std::string& item, const std::string& activity);
  void Drag(const std::string& item, const std::string& activity);

  ZefBaseUnknown_var Item(const std::string& name);
  embedded::MfgAssembly* AssemblyOf(const std::string& station) const;
  // Names of what the first output of a station contains, and of what is first assigned to an
  // activity itself.
  Strings Children(const std::string& station) const;
  Strings FirstAssigned(const std::string& activity) const;
  // Title and message of each warning since the last call.
  Strings Warnings();
  Strings OutOfStep() const;

 private:
  TuvIUpdateManufAssly_var update_;
};

// Fixture with a line; nothing of it is left behind.
class LineFixture : public ReferenceAudit {
 protected:
  void TearDown() override {
    owner_.reset();
    ReferenceAudit::TearDown();
  }

 private:
  std::unique_ptr<Line> owner_ = std::make_unique<Line>();

 protected:
  Line& line = *owner_;
};

}  // namespace tests
