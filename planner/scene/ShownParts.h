#pragma once

#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "embedded/model/Product.h"
#include "planner/scene/Glb.h"

namespace biwplan {

constexpr Colour kHighlightColour{86, 180, 233};

// A part where it stands; what an instance repeats stands there again.
struct ShownPart {
  // The key; below instances with theirs before it: "HINGE.1/PIN".
  std::string id;
  embedded::Product* product = nullptr;
  // Of the product, or of the reference of an instance without shape of its own.
  const embedded::ProductData* shape = nullptr;
  ZefMathTransformation place{};  // from the product's own axes to the vehicle's
  Colour colour{};
  bool isHighlighted = false;
  bool isShown = true;
  bool hasParts = false;
  // Something to repeat elsewhere, not a part that stands anywhere itself.
  bool isPattern = false;
};

// The parts of a picture, in the order of the tree, each once.
class ShownParts {
 public:
  using Objects = std::unordered_set<const ZefBaseUnknown*>;

  // Highlighted objects show it, and everything below them.
  void Highlight(Objects iObjects) { highlighted_ = std::move(iObjects); }
  // Patterns and everything below them stay out of sight.
  void LeaveOut(Objects iPatterns) { patterns_ = std::move(iPatterns); }
  // A product or an assembly and all below it, moved from where they stand. The colour of a part is
  // the first of: its own, its reference's, that of what is above it, that given. InputError for
  // more parts than a picture can hold.
  void Add(ZefBaseUnknown* iObject, const ZefMathTransformation& iMove = {},
           std::optional<Colour> iColour = {});

  const std::vector<ShownPart>& Parts() const { return parts_; }

 private:
  // An object to be shown, with what it has from those above it.
  struct Open {
    ZefBaseUnknown* object = nullptr;
    ZefMathTransformation move{};
    std::optional<Colour> colour{};
    std::string prefix{};
    bool isHighlighted = false;
    bool isShown = true;
    bool isPattern = false;
  };

  // Takes the part in and changes what those below it have; false for one that is there already.
  bool Take(embedded::Product& product, Open& ioNext);

  std::vector<ShownPart> parts_;
  std::unordered_set<std::string> ids_;
  Objects highlighted_;
  Objects patterns_;
};

// What the second moves, moved by the first.
ZefMathTransformation Composed(const ZefMathTransformation& iFirst,
                               const ZefMathTransformation& iSecond);

}  // namespace biwplan
