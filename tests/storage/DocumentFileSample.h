#pragma once

#include "embedded/model/Document.h"

namespace tests {

// A small document with something of everything that a document can hold, orders that differ from
// those in which objects stand included. everything.json is its file.
embedded::Owned<embedded::Document> RichDocument();

}  // namespace tests
