#pragma once

#include <string>

#include "planner/report/Json.h"

namespace biwplan {

class Session;
class Syntax;

// What a command has to say.
struct Answer {
  // An object, for programs.
  Json data = Json::object();
  // The answer to a question is no, or nothing was there to be done.
  bool isNo = false;
};

// One command of the planner's language. An object serves a single use.
class Command {
 public:
  virtual ~Command() = default;
  virtual void Declare(Syntax& /*ioSyntax*/) {}
  // Asked when its words are read: whether it may change the document or its file.
  virtual bool MayChange() const { return false; }
  // InputError when it cannot be done; the document is then as it was.
  virtual Answer Run(Session& ioSession) = 0;
  // The data of its answer for people: lines, each with its end, or nothing.
  virtual std::string InWords(const Json& iData) const = 0;
};

}  // namespace biwplan
