#include "planner/import/DocumentBuilder.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <vector>

#include "embedded/Error.h"
#include "planner/import/Graph.h"

namespace biwplan {

namespace {

using embedded::Activity;
using embedded::Document;
using embedded::InputError;
using embedded::MfgAssembly;
using embedded::Product;

// Runs what adds a row and says in its errors where the row stands.
template <class Use>
auto AtRow(const std::string& source, long line, const Use& use) {
  try {
    return use();
  } catch (const InputError& error) {
    throw InputError(source + ", line " + std::to_string(line) + ": " + error.what());
  }
}

embedded::ProductData DataOf(const PartRow& row) {
  embedded::ProductData data;
  data.key = row.key;
  data.partNumber = row.number;
  data.name = row.name;
  if (row.colour) std::copy(row.colour->begin(), row.colour->end(), data.colour);
  std::copy(row.position.begin(), row.position.end(), data.position);
  if (row.box) {
    std::copy(row.box->least.begin(), row.box->least.end(), data.boxMin);
    std::copy(row.box->most.begin(), row.box->most.end(), data.boxMax);
  }
  data.geometry = row.geometry;
  data.mesh = row.mesh;
  return data;
}

class DocumentBuilder {
 public:
  DocumentBuilder(const PartsList& parts, const WeldList& welds, const ProcessList& process,
                  const std::string& key)
      : parts_(parts),
        welds_(welds),
        process_(process),
        document_(embedded::MakeOwned<Document>(Document::Kind::Process, key)) {}

  embedded::Owned<Document> Build() {
    AddProducts();
    for (const WeldRow& weld : welds_.welds) {
      AtRow(welds_.source, weld.line, [&] { AddWeld(weld); });
    }
    AddActivities();
    for (const ProcessFlow& flow : process_.flows) {
      document_->AddFlow(*activities_[flow.from], *activities_[flow.to], true);
    }
    AddItems();
    FillAssemblies();
    return document_;
  }

 private:
  void AddProducts() {
    products_.resize(parts_.parts.size());
    for (const std::size_t i : parts_.order) {
      const PartRow& row = parts_.parts[i];
      Product& parent = row.parent ? *products_[*row.parent] : document_->RootProduct();
      embedded::ProductData data = DataOf(row);
      Product* const reference = row.reference ? products_[*row.reference] : nullptr;
      if (reference && data.partNumber.empty()) data.partNumber = reference->Data().partNumber;
      AtRow(parts_.source, row.line,
            [&] { products_[i] = &document_->AddProduct(parent, data, reference); });
    }
  }

  void AddWeld(const WeldRow& row) {
    if (row.shape == WeldShape::Curve) return AddSeam(row);
    if (row.shape != WeldShape::Point) {
      document_->AddPointFeature({row.id, row.position, row.shape == WeldShape::Clamp});
      return;
    }
    embedded::SpotWeldData data;
    Describe(row, data);
    std::copy(row.position.begin(), row.position.end(), data.position.begin());
    std::copy(row.angles.begin(), row.angles.end(), data.position.begin() + 3);
    data.diameter = row.diameter.value_or(data.diameter);
    document_->AddSpotWeld(data);
  }

  void AddSeam(const WeldRow& row) {
    embedded::CurveFastenerData data;
    Describe(row, data);
    for (const SeamPoint& point : row.points) data.points.push_back(point.position);
    document_->AddCurveFastener(data);
  }

  void Describe(const WeldRow& row, embedded::FastenerData& data) const {
    data.key = row.id;
    data.type = row.type;
    for (const std::size_t part : row.parts) data.parts.push_back(products_[part]);
  }

  void AddActivities() {
    activities_.resize(process_.activities.size());
    for (const std::size_t i : process_.order) {
      const ActivityRow& row = process_.activities[i];
      Activity& parent = row.parent ? *activities_[*row.parent] : *document_->Root();
      AtRow(process_.source, row.line,
            [&] { activities_[i] = &document_->AddActivity(parent, row.data); });
    }
  }

  void AddItems() {
    for (const std::string& name : process_.assemblies) {
      MfgAssembly& assembly = document_->AddAssembly(name);
      assembly.SetName(name.c_str());
      numbers_.emplace(&assembly, assemblies_.size());
      assemblies_.push_back(&assembly);
    }
    for (std::size_t i = 0; i < activities_.size(); ++i) {
      const ActivityRow& row = process_.activities[i];
      for (const std::size_t item : row.firstAssigned) {
        activities_[i]->Link(Item(item), embedded::ItemLink::FirstAssigned);
      }
      for (const std::size_t item : row.items) {
        activities_[i]->Link(Item(item), embedded::ItemLink::Plain);
      }
      for (const std::size_t item : row.outputs) AddOutput(*activities_[i], Item(item));
    }
  }

  ZefBaseUnknown_var Item(std::size_t item) const {
    if (item < products_.size()) return products_[item]->Identity();
    return assemblies_[item - products_.size()]->Identity();
  }

  // None for a part.
  std::optional<std::size_t> AssemblyNumber(std::size_t item) const {
    if (item < products_.size()) return std::nullopt;
    return item - products_.size();
  }

  // A new output is empty and quiet; holding its product is quiet, too.
  static void AddOutput(Activity& activity, const ZefBaseUnknown_var& item) {
    ZefISPPProductIO* added = nullptr;
    activity.AddProductOutput(added, nullptr);
    const auto kept = Adopt(added);
    activity.Outputs().back()->Hold(item);
  }

  void FillAssemblies() {
    Graph contents(assemblies_.size());
    std::vector<long> lines(assemblies_.size());
    for (std::size_t i = 0; i < activities_.size(); ++i) {
      const ActivityRow& row = process_.activities[i];
      const auto number = row.outputs.size() == 1 ? AssemblyNumber(row.outputs[0]) : std::nullopt;
      if (!number) continue;
      lines[*number] = row.line;
      Fill(*assemblies_[*number], *activities_[i], contents[*number]);
    }
    CheckContents(contents, lines);
  }

  void Fill(MfgAssembly& assembly, Activity& activity, std::vector<std::size_t>& ioContents) {
    ZefListValZefBaseUnknown_var inputs;
    activity.GetInputItems(inputs);
    for (int i = 1; i <= inputs.Size(); ++i) {
      const ZefBaseUnknown_var input = inputs[i];
      if (assembly.OwnChildren().Locate(input) != 0) continue;
      assembly.ForceChild(input);
      const auto* const inner = embedded::ObjectAs<MfgAssembly>(input.Get());
      if (inner) ioContents.push_back(numbers_.at(inner));
    }
  }

  void CheckContents(const Graph& contents, const std::vector<long>& lines) const {
    const auto refuse = [&](std::size_t number, const std::string& why) {
      throw InputError(process_.source + ", line " + std::to_string(lines[number]) +
                       ": the output " + Quoted(process_.assemblies[number]) + why);
    };
    const auto cycles = FindCycles(contents, 1);
    if (!cycles.empty()) {
      refuse(cycles.front().front(), " would contain itself; it cannot go into what it is made of");
    }
    const std::vector<std::size_t> levels = Levels(contents);
    const auto deepest = std::max_element(levels.begin(), levels.end());
    if (deepest == levels.end() || *deepest <= ProcessList::kMostLevels) return;
    refuse(static_cast<std::size_t>(deepest - levels.begin()),
           " stands more than " + std::to_string(ProcessList::kMostLevels) +
               " assemblies deep; let fewer assemblies go into one another");
  }

  const PartsList& parts_;
  const WeldList& welds_;
  const ProcessList& process_;
  embedded::Owned<Document> document_;
  std::vector<Product*> products_;
  std::vector<Activity*> activities_;
  std::vector<MfgAssembly*> assemblies_;
  std::unordered_map<const MfgAssembly*, std::size_t> numbers_;
};

}  // namespace

embedded::Owned<Document> BuildDocument(const PartsList& iParts, const WeldList& iWelds,
                                        const ProcessList& iProcess,
                                        const std::string& iProcessKey) {
  return DocumentBuilder(iParts, iWelds, iProcess, iProcessKey).Build();
}

}  // namespace biwplan
