#include "planner/scene/ShownParts.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "embedded/Error.h"
#include "embedded/model/ProductWalk.h"
#include "host/component/Interruption.h"
#include "host/product/Product.h"

namespace biwplan {

namespace {

using embedded::Product;

constexpr std::size_t kMostParts = 200'000;
constexpr Colour kPlainPart{176, 183, 192};
constexpr int kHidden = 1;

ZefMathTransformation PlaceOf(const Product& product) {
  const ZefIMovable_var movable = product.Identity();
  ZefMathTransformation place;
  if (movable) movable->GetAbsPosition(place);
  return place;
}

// White stands for no colour of its own.
std::optional<Colour> OwnColour(const Product& product) {
  const ZefIAsmGraphicProperties_var properties = product.Identity();
  int red = 255, green = 255, blue = 255;
  if (!properties || Failed(properties->GetColor(red, green, blue))) return {};
  if (red == 255 && green == 255 && blue == 255) return {};
  return Colour{red, green, blue};
}

std::optional<Colour> ColourOf(const Product& product) {
  const std::optional<Colour> own = OwnColour(product);
  return own || !product.Reference() ? own : OwnColour(*product.Reference());
}

const embedded::ProductData& ShapeOf(const Product& product) {
  const embedded::ProductData& own = product.Data();
  const bool isEmpty = std::equal(own.boxMin, own.boxMin + 3, own.boxMax) && own.mesh.empty();
  return isEmpty && product.Reference() ? product.Reference()->Data() : own;
}

}  // namespace

ZefMathTransformation Composed(const ZefMathTransformation& iFirst,
                               const ZefMathTransformation& iSecond) {
  return {iFirst.GetMatrix() * iSecond.GetMatrix(),
          iFirst.GetMatrix() * iSecond.GetVector() + iFirst.GetVector()};
}

void ShownParts::Add(ZefBaseUnknown* iObject, const ZefMathTransformation& iMove,
                     std::optional<Colour> iColour) {
  std::vector<Open> open{{iObject, iMove, iColour}};
  while (!open.empty()) {
    Interruption::Check();
    Open next = std::move(open.back());
    open.pop_back();
    next.isHighlighted = next.isHighlighted || highlighted_.contains(next.object);
    next.isPattern = next.isPattern || patterns_.contains(next.object);
    auto* const product = embedded::ObjectAs<Product>(next.object);
    if (product && !Take(*product, next)) continue;
    const ZefListValZefBaseUnknown_var below = embedded::ChildrenBelow(next.object);
    for (int i = below.Size(); i >= 1; --i) {
      next.object = below[i].Get();
      open.push_back(next);
    }
  }
}

bool ShownParts::Take(Product& product, Open& ioNext) {
  ShownPart part{ioNext.prefix + product.Key(), &product, &ShapeOf(product)};
  if (!ids_.insert(part.id).second) return false;
  if (ids_.size() > kMostParts) {
    throw embedded::InputError("the scene has more than " + std::to_string(kMostParts) +
                               " parts, those of instances included; 'preview' shows some of them");
  }
  const embedded::Look& look = product.Display();
  part.place = Composed(ioNext.move, PlaceOf(product));
  part.isPattern = ioNext.isPattern;
  part.isShown =
      ioNext.isShown && !part.isPattern && look.IsRepresented() && look.ShowAttribute() != kHidden;
  part.isHighlighted = ioNext.isHighlighted;
  part.hasParts = !product.Below().empty();
  if (const std::optional<Colour> own = ColourOf(product)) ioNext.colour = own;
  part.colour = part.isHighlighted ? kHighlightColour : ioNext.colour.value_or(kPlainPart);
  ioNext.isShown = part.isShown;
  if (product.Reference()) {
    // What is below an instance stands to it as it stands to the reference.
    ioNext.move = Composed(part.place, PlaceOf(*product.Reference()).Inverse());
    ioNext.prefix = part.id + "/";
  }
  parts_.push_back(std::move(part));
  return true;
}

}  // namespace biwplan
