#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "embedded/model/Document.h"

namespace biwplan {

// What a picture of the process shows. It names objects of the document, which outlives it.
struct FlowChart {
  // An activity. The process itself is one only when something flows or is made at it.
  struct Box {
    const embedded::Activity* activity;
    // Boxes inside it, by position.
    std::vector<std::size_t> inner{};
    // With those of the boxes inside.
    std::size_t welds = 0;
    // What it takes in itself, without assemblies.
    std::size_t parts = 0;
    // Titles of the assemblies that it makes.
    std::vector<std::string> outputs{};
    // Reasons, each in a few words.
    std::vector<std::string> conflicts{};
  };

  // A control flow, or else an assembly's way without one.
  struct Arrow {
    std::size_t from;
    std::size_t to;
    bool isFlow = true;
    bool isConflict = false;
    // Titles of the assemblies that are handed on here.
    std::vector<std::string> assemblies{};
  };

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  // Each before those inside it, otherwise in the document's order.
  std::vector<Box> boxes;
  std::vector<std::size_t> outermost;
  // For each box the one around it, or none.
  std::vector<std::size_t> around;
  std::vector<Arrow> arrows;
  std::string title;
  std::size_t welds = 0;
  std::size_t unassigned = 0;
};

std::size_t CountStations(const FlowChart& iChart);
std::size_t CountConflicts(const FlowChart& iChart);

// Of an activity and what is nested in it, with the welds on these; of the process with all welds.
FlowChart ChartOf(embedded::Document& iDocument, const embedded::Activity& iTop);

}  // namespace biwplan
