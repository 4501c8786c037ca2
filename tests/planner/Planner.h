#pragma once

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "planner/Program.h"
#include "planner/language/Words.h"
#include "tests/support/ReferenceAudit.h"
#include "tests/support/ScratchFolder.h"

namespace tests {

// What the program said; paths are told without their folder.
struct Spoken {
  int status;
  std::string results;
  std::string messages;
};

// A folder with three lists, and the program run on a document in it as `door.json`.
class PlannerTest : public ReferenceAudit {
 protected:
  static constexpr char kParts[] = "number,name\nP1,Inner panel\nP2,Outer panel\nP3,Hinge\n";
  static constexpr char kWelds[] =
      "id,x,y,z,parts,type\n"
      "SW-1,100,0,52.5,P1;P2,\nSW-2,110,0,52.5,P1;P2,\nSW-3,120,0,52.5,P1;P3,\n"
      "SM-1,0,0,0,P1;P3,seam\nSM-1,0,30,0,P1;P3,seam\n"
      "L-1,5,6,7,,locator\nC-1,1,2,3,,clamp\n";
  static constexpr char kProcess[] =
      "id,name,parent,type,task,predecessors\n"
      "ST10,Geo station,,station,,\nOP10,Tack,ST10,operation,welding,\n"
      "OP20,Respot,ST10,operation,welding,OP10\nOP30,Seal,ST10,operation,curve fastening,OP20\n";

  PlannerTest() {
    folder_.Write("parts.csv", kParts);
    folder_.Write("welds.csv", kWelds);
    folder_.Write("process.csv", kProcess);
  }

  std::string Path(const std::string& name) const { return (folder_.Path() / name).string(); }

  std::string Bytes(const std::string& name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  // @ in an argument stands for the folder.
  Spoken Run(std::vector<std::string> arguments, const std::string& input = {}) const {
    for (std::string& argument : arguments) {
      if (argument.starts_with('@')) argument = Path(argument.substr(1));
    }
    std::istringstream lines(WithPaths(input));
    std::ostringstream results;
    std::ostringstream messages;
    biwplan::Console console{results, messages};
    const int status = biwplan::RunProgram(arguments, {lines}, console);
    return {status, WithoutPaths(results.str()), WithoutPaths(messages.str())};
  }

  // One command on the document.
  Spoken Do(const std::string& line) const {
    std::vector<std::string> arguments = biwplan::SplitWords(line);
    arguments.insert(arguments.begin(), "@door.json");
    return Run(arguments);
  }

  void Begin() const {
    const Spoken spoken = Do("new --parts @parts.csv --welds @welds.csv --process @process.csv");
    ASSERT_EQ(spoken.status, 0) << spoken.messages;
  }

  std::string WithoutPaths(std::string text) const {
    return Replaced(std::move(text), folder_.Path().string() + "/", "");
  }

  ScratchFolder folder_;

 private:
  std::string WithPaths(std::string text) const {
    return Replaced(std::move(text), "@", folder_.Path().string() + "/");
  }

  static std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
      text.replace(at, from.size(), to);
    }
    return text;
  }
};

}  // namespace tests
