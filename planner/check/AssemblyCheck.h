#pragma once

#include <string>
#include <vector>

#include "embedded/model/Document.h"

namespace biwplan {

// A difference between a station's manufacturing assembly and what the process says. `check` tells
// it and pictures of the flow show it.
struct AssemblyFinding {
  enum class Kind {
    MissingChild,     // an input of the station that the assembly does not contain
    SurplusChild,     // a child that is no input of the station
    NotHandedOn,      // the next station does not take the assembly in
    Undecided,        // several stations follow, and none of them takes the assembly in
    WronglyAssigned,  // an activity takes it in that the flow does not lead to
    ContainsItself,
    LeadsBack,       // it contains what the next station makes, which therefore cannot take it in
    TakenInTooDeep,  // an item that only activities below the station's operations take in
    SeveralOutputs   // nothing is filled into any of them
  };
  Kind kind;
  const embedded::Activity* station;
  // Null where there are several.
  const embedded::MfgAssembly* assembly;
  // The child or the activity that the finding is about; null when it is about neither.
  ZefBaseUnknown_var object;
  // Who takes in what is too deep.
  const embedded::Activity* taker = nullptr;
};

// Looks at every station with an output, in the document's order. An assembly that cannot be put
// into another, because that would then contain itself, is not missing there.
std::vector<AssemblyFinding> CheckAssemblies(const embedded::Document& iDocument);

// What is wrong and which gesture would mend it, in one sentence. Where parts move along, the
// gesture does so while the update is on.
std::string Describe(const AssemblyFinding& iFinding);

// The stations that a station's assembly can go to: those that follow it, or else follow what it is
// nested in. With exactly one the assembly goes there.
std::vector<const embedded::Activity*> NextStations(const embedded::Activity& iStation);

// Whether the assembly is, or contains at any depth, what the station makes: then it cannot become
// part of that.
bool ContainsOutputOf(const embedded::MfgAssembly& iAssembly, const embedded::Activity& iStation);

// The activities that have the assembly as first assigned, each once.
std::vector<const embedded::Activity*> ConsumersOf(const embedded::MfgAssembly& iAssembly);

}  // namespace biwplan
