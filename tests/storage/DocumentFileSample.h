#pragma once

#include <string>

#include "embedded/model/Document.h"

namespace tests {

// A small document with something of everything that a document can hold, orders that differ from
// those in which objects stand included.
embedded::Owned<embedded::Document> RichDocument();

// All that a document holds, a line for each fact, read from the objects themselves.
std::string Describe(const embedded::Document& document);

}  // namespace tests
