#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "embedded/model/DisplayedObject.h"
#include "embedded/model/Owned.h"
#include "host/process/ZefISPPItem.h"
#include "host/product/Product.h"

namespace embedded {

// What a product is made from.
struct ProductData {
  std::string key{};         // unique in the document
  std::string partNumber{};  // the key when empty; instances share their reference's
  std::string name{};
  int colour[3] = {255, 255, 255};  // 255 each: none of its own
  // Position in the vehicle: mm, then degrees about X, Y and Z.
  double position[6] = {0, 0, 0, 0, 0, 0};
  // Extent in the product's own axes, mm; no box when all are 0.
  double boxMin[3] = {0, 0, 0};
  double boxMax[3] = {0, 0, 0};
  std::string geometry{};  // file with the shape, as it was given; may be empty
  // STL or OBJ file with the shape in the product's own axes, mm; may be empty.
  std::filesystem::path mesh{};
};

// A product: a reference, or an instance of one, which has the reference's children.
class Product final : public DisplayedObject<ZefIProduct, ZefINavigateObject, ZefISPPItem,
                                             ZefIMovable, ZefIAsmGraphicProperties> {
 public:
  // `iReference` null: the product is a reference itself.
  Product(const ProductData& iData, Product* iReference, MembershipPointer iMembership);
  ZefMetaClass* GetMetaObject() const override;

  HRESULT GetReferenceProduct(ZefIProduct_var& oReference) override;
  int GetChildrenCount() override;
  ZefListValZefBaseUnknown_var* GetAllChildren(const char* iType) override;
  HRESULT GetProductText(ZefUnicodeString& oText) override;
  ZefUnicodeString GetPartNumber() override;
  ZefListValZefBaseUnknown_var* GetChildren() override;
  HRESULT GetAbsPosition(ZefMathTransformation& oPosition) override;
  HRESULT GetColor(int& oRed, int& oGreen, int& oBlue) override;

  const ProductData& Data() const { return data_; }
  // Null for a reference and once the reference's document ended.
  Product* Reference() const { return reference_; }
  Product* Parent() const { return parent_; }
  // Children of its own.
  const std::vector<Product*>& Children() const { return children_; }
  // The children that it shows: those of the reference for an instance.
  const std::vector<Product*>& Below() const;
  // Whether the other product is this one or stands below it, in its own place or in that of the
  // reference of an instance.
  bool LeadsTo(const Product& iOther) const;

 private:
  friend class Document;

  ProductData data_;
  Product* reference_;
  Product* parent_ = nullptr;
  std::vector<Product*> children_;
};

// The transformation of a position in mm and degrees about X, Y and Z (applied in this order).
ZefMathTransformation TransformationOf(const double (&iPosition)[6]);

}  // namespace embedded
