#pragma once

#include <memory>

namespace embedded {

class Document;

// The document that an object belongs to, shared by all of its objects. The document clears it when
// it ends, so that objects which outlive their document know of none.
struct Membership {
  Document* document = nullptr;
};

using MembershipPointer = std::shared_ptr<const Membership>;

}  // namespace embedded
