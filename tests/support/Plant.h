#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "embedded/model/Document.h"

namespace tests {

using Point = std::array<double, 3>;  // mm, vehicle coordinates

// A plant laid out in a few lines, on a document of its own:
//
//   Plant plant;
//   auto& op = plant.Operation("OP10");
//   auto& weld = plant.Weld("SW-1", {100, 0, 0});
//   plant.Assign(op, weld);
//
// Nothing is notified: what is laid out stands there before the test begins.
class Plant {
 public:
  using Kind = embedded::Document::Kind;
  using Task = embedded::ActivityData::Task;

  explicit Plant(Kind kind = Kind::Process);

  // About one station for 100 welds with four operations each, joined one after the other, a part
  // for 20 welds, and every tenth fastener a seam. Three of four fasteners are assigned to an
  // operation. The same size and seed give the same plant.
  static Plant OfSize(int welds, unsigned seed = 1);

  // Below the root.
  embedded::Activity& Station(const std::string& key);
  // Below `parent`, or else below the latest station, or else below the root.
  embedded::Activity& Operation(const std::string& key, Task task = Task::Welding,
                                embedded::Activity* parent = nullptr);
  embedded::ControlFlow& Flow(embedded::Activity& from, embedded::Activity& to);

  embedded::Product& Part(const std::string& key, embedded::Product* parent = nullptr);
  embedded::SpotWeld& Weld(const std::string& key, const Point& at = {},
                           const std::vector<embedded::Product*>& joined = {});
  embedded::CurveFastener& Seam(const std::string& key, const std::vector<Point>& points = {},
                                const std::vector<embedded::Product*>& joined = {});
  embedded::PointFeature& Locator(const std::string& key, const Point& at = {});
  embedded::PointFeature& Clamp(const std::string& key, const Point& at = {});

  // As an item of the activity, once more if it is one already.
  template <class Item>
  void Assign(embedded::Activity& activity, Item& item) {
    activity.Link(item.Identity(), embedded::ItemLink::Plain);
  }

  const embedded::Owned<embedded::Document>& Document() const { return document_; }
  embedded::Activity& Root() const { return *document_->Root(); }
  // Operations, spot welds and seams in the order in which they were laid out.
  const std::vector<embedded::Activity*>& Operations() const { return operations_; }
  const ZefListValZefBaseUnknown_var& Fasteners() const { return fasteners_; }

 private:
  embedded::Owned<embedded::Document> document_;
  embedded::Activity* station_ = nullptr;
  std::vector<embedded::Activity*> operations_;
  ZefListValZefBaseUnknown_var fasteners_;
};

inline ZefBaseUnknown_var HandleOf(std::nullptr_t) { return {}; }
template <class Object>
ZefBaseUnknown_var HandleOf(Object& object) {
  return object.Identity();
}

// A list of objects of the model; nullptr stands for a null handle.
template <class... Objects>
ZefListValZefBaseUnknown_var ListOf(Objects&&... objects) {
  ZefListValZefBaseUnknown_var list;
  (list.Append(HandleOf(objects)), ...);
  return list;
}

// What users call the objects of a list, in order; "null" for a null handle and "?" for an object
// without name.
std::vector<std::string> Names(const ZefListValZefBaseUnknown_var& list);

}  // namespace tests
