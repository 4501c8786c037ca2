#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "embedded/model/Document.h"
#include "embedded/storage/DocumentFormat.h"
#include "embedded/storage/JsonWriter.h"

namespace embedded {

// Writes one document as JSON. InputError for what the format cannot hold.
class DocumentWriter {
 public:
  // Paths are written relative to `iFolder`, empty for the current one.
  DocumentWriter(const Document& iDocument, const std::filesystem::path& iFolder);
  std::string Write();

 private:
  // How the file names an object: its kind and its key.
  struct Name {
    std::string_view kind{};  // empty for what is no object of the document
    const std::string* key = nullptr;
  };
  struct OutputPlace {
    const Activity* activity;
    int number;         // among the activity's, from 1
    std::size_t order;  // among the document's
  };

  void WriteHeader();
  void WriteDatabase();
  void WriteChoices();
  void Write(const Activity& activity);
  void WriteSettings(const ActivityData& data);
  void Write(const ControlFlow& flow);
  void Write(const Product& product);
  void WriteData(const ProductData& data);
  std::string FromFolder(const std::filesystem::path& file) const;
  void Write(const MfgAssembly& assembly);
  void WriteProducers(const MfgAssembly& assembly);
  void WriteFeature(const ZefBaseUnknown& feature);
  void Write(const SpotWeld& weld);
  void Write(const CurveFastener& curve);
  void Write(const PointFeature& point);
  void WriteFastening(const FastenerFacet& fastener);
  void WriteStatus(const FastenerFacet& fastener, const Look& look);
  void Write(const ItemLink& link);
  void WriteSource(const ZefBaseUnknown* source);
  void WriteLook(const Look& look);

  // A list of the file, element by element; an error names the place of the element.
  template <class List, class Function>
  void WriteList(std::string_view key, const List& list, const Function& write);
  void Field(std::string_view key, std::string_view text);
  void Field(std::string_view key, double number, const NumberRange& range);
  void OptionalField(std::string_view key, const std::string& text, std::string_view standard = {});
  void Numbers(std::span<const double> numbers);
  void Field(std::string_view key, std::span<const double> numbers);
  Name NameOf(const ZefBaseUnknown* object) const;
  template <class Feature>
  Name NameOfFeature(const Feature& feature) const;
  // The member that names an object, such as "feature": "SW-1", or those that name an output.
  void WriteReference(const ZefBaseUnknown* object, const char* role);
  void WriteReference(const OutputPlace& place);

  const Document& document_;
  std::filesystem::path folder_;
  JsonWriter json_;
  std::unordered_map<const ZefBaseUnknown*, OutputPlace> outputs_;
};

}  // namespace embedded
