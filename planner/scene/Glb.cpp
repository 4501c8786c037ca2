#include "planner/scene/Glb.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <tiny_gltf.h>
#include <utility>

namespace biwplan {

namespace {

constexpr double kMetresPerMillimetre = 0.001;
constexpr double kGlassOpacity = 0.25;
constexpr std::size_t kChunkAlignment = 4;

// glTF wants the amount of light; colours are given as screens take them.
double LightOf(int component) {
  const double share = component / 255.0;
  return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

template <std::size_t N>
void SetBounds(const std::vector<std::array<float, N>>& elements, tinygltf::Accessor& accessor) {
  for (std::size_t axis = 0; axis < N; ++axis) {
    const auto [least, most] =
        std::minmax_element(elements.begin(), elements.end(),
                            [axis](const auto& a, const auto& b) { return a[axis] < b[axis]; });
    accessor.minValues.push_back((*least)[axis]);
    accessor.maxValues.push_back((*most)[axis]);
  }
}

bool IsTurned(const ZefMath3x3Matrix& matrix) {
  for (int i = 0; i < 3; ++i) {
    const ZefMathVector& column = matrix.Column(i);
    const double entries[3] = {column.GetX(), column.GetY(), column.GetZ()};
    for (int j = 0; j < 3; ++j) {
      if (entries[j] != (i == j ? 1 : 0)) return true;
    }
  }
  return false;
}

void Place(const ZefMathTransformation& place, tinygltf::Node& node) {
  const ZefMathVector& at = place.GetVector();
  if (!IsTurned(place.GetMatrix())) {
    node.translation = {at.GetX(), at.GetY(), at.GetZ()};
    if (Dot(at, at) == 0) node.translation.clear();
    return;
  }
  for (int i = 0; i < 3; ++i) {
    const ZefMathVector& column = place.GetMatrix().Column(i);
    node.matrix.insert(node.matrix.end(), {column.GetX(), column.GetY(), column.GetZ(), 0});
  }
  node.matrix.insert(node.matrix.end(), {at.GetX(), at.GetY(), at.GetZ(), 1});
}

std::uint32_t NumberAt(const std::string& bytes, std::size_t at) {
  std::uint32_t number = 0;
  std::memcpy(&number, bytes.data() + at, sizeof number);
  return number;
}

void PutNumber(std::string& bytes, std::size_t at, std::size_t number) {
  const auto stored = static_cast<std::uint32_t>(number);
  std::memcpy(bytes.data() + at, &stored, sizeof stored);
}

// The file with extras: the library's own way to write them makes null of an empty list and leaves
// out what is null.
std::string WithExtras(std::string bytes, const std::vector<Json>& extras, const Json& scene) {
  constexpr std::size_t kLength = 8, kJsonLength = 12, kJson = 20;
  const std::size_t length = NumberAt(bytes, kJsonLength);
  Json json = Json::parse(bytes.begin() + kJson, bytes.begin() + kJson + static_cast<long>(length));
  json["scenes"][0]["extras"] = scene;
  for (std::size_t i = 0; i < extras.size(); ++i) {
    if (!extras[i].is_null()) json["nodes"][i]["extras"] = extras[i];
  }
  std::string text = json.dump();
  text.resize((text.size() + kChunkAlignment - 1) / kChunkAlignment * kChunkAlignment, ' ');
  bytes.replace(kJson, length, text);
  PutNumber(bytes, kJsonLength, text.size());
  PutNumber(bytes, kLength, bytes.size());
  return bytes;
}

}  // namespace

Glb::Glb(const std::string& iRootName) : model_(std::make_unique<tinygltf::Model>()) {
  model_->asset.version = "2.0";
  model_->asset.generator = "biwplan";
  tinygltf::Node root;
  root.name = iRootName;
  root.rotation = {-std::numbers::sqrt2 / 2, 0, 0, std::numbers::sqrt2 / 2};
  root.scale.assign(3, kMetresPerMillimetre);
  model_->nodes.push_back(std::move(root));
  extras_.emplace_back();
  model_->scenes.emplace_back().nodes = {0};
  model_->defaultScene = 0;
}

Glb::~Glb() = default;

template <class Element>
int Glb::AddAccessor(const std::vector<Element>& elements, int target, int componentType,
                     int type) {
  if (model_->buffers.empty()) model_->buffers.emplace_back();
  std::vector<unsigned char>& data = model_->buffers[0].data;
  tinygltf::BufferView view;
  view.buffer = 0;
  view.byteOffset = data.size();
  view.byteLength = elements.size() * sizeof(Element);
  view.target = target;
  const auto* const bytes = reinterpret_cast<const unsigned char*>(elements.data());
  data.insert(data.end(), bytes, bytes + view.byteLength);
  data.resize((data.size() + kChunkAlignment - 1) / kChunkAlignment * kChunkAlignment);
  model_->bufferViews.push_back(view);
  tinygltf::Accessor accessor;
  accessor.bufferView = static_cast<int>(model_->bufferViews.size()) - 1;
  accessor.componentType = componentType;
  accessor.type = type;
  accessor.count = view.byteLength / tinygltf::GetComponentSizeInBytes(componentType) /
                   tinygltf::GetNumComponentsInType(type);
  model_->accessors.push_back(std::move(accessor));
  return static_cast<int>(model_->accessors.size()) - 1;
}

Glb::Shape Glb::AddShape(const TriangleMesh& iMesh) {
  const auto addTriples = [this](const std::vector<TriangleMesh::Triple>& triples) {
    return AddAccessor(triples, TINYGLTF_TARGET_ARRAY_BUFFER, TINYGLTF_COMPONENT_TYPE_FLOAT,
                       TINYGLTF_TYPE_VEC3);
  };
  std::array<int, 3> shape{addTriples(iMesh.points), -1, -1};
  SetBounds(iMesh.points, model_->accessors.back());
  if (!iMesh.normals.empty()) shape[1] = addTriples(iMesh.normals);
  shape[2] = AddAccessor(iMesh.triangles, TINYGLTF_TARGET_ELEMENT_ARRAY_BUFFER,
                         TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT, TINYGLTF_TYPE_SCALAR);
  shapes_.push_back(shape);
  return static_cast<Shape>(shapes_.size()) - 1;
}

int Glb::MaterialOf(const Surface& surface) {
  const auto [known, isNew] =
      materials_.try_emplace(surface, static_cast<int>(model_->materials.size()));
  if (!isNew) return known->second;
  tinygltf::Material& material = model_->materials.emplace_back();
  const double opacity = surface.kind == Surface::Kind::Solid   ? 1
                         : surface.kind == Surface::Kind::Glass ? kGlassOpacity
                                                                : 0;
  const auto& [red, green, blue] = surface.colour;
  material.pbrMetallicRoughness.baseColorFactor = {LightOf(red), LightOf(green), LightOf(blue),
                                                   opacity};
  material.pbrMetallicRoughness.metallicFactor = 0;
  material.pbrMetallicRoughness.roughnessFactor = 0.7;
  material.doubleSided = true;
  if (surface.kind == Surface::Kind::Glass) material.alphaMode = "BLEND";
  if (surface.kind == Surface::Kind::Hidden) material.alphaMode = "MASK";
  return known->second;
}

int Glb::MeshOf(Shape shape, const Surface& surface) {
  const int material = MaterialOf(surface);
  const auto [known, isNew] =
      meshes_.try_emplace({shape, material}, static_cast<int>(model_->meshes.size()));
  if (!isNew) return known->second;
  const auto& [points, normals, triangles] = shapes_[static_cast<std::size_t>(shape)];
  tinygltf::Primitive primitive;
  primitive.mode = TINYGLTF_MODE_TRIANGLES;
  primitive.attributes["POSITION"] = points;
  if (normals >= 0) primitive.attributes["NORMAL"] = normals;
  primitive.indices = triangles;
  primitive.material = material;
  model_->meshes.emplace_back().primitives.push_back(std::move(primitive));
  return known->second;
}

void Glb::AddNode(Node iNode) {
  tinygltf::Node node;
  node.name = std::move(iNode.name);
  Place(iNode.place, node);
  if (iNode.shape) node.mesh = MeshOf(*iNode.shape, iNode.surface);
  model_->nodes[0].children.push_back(static_cast<int>(model_->nodes.size()));
  model_->nodes.push_back(std::move(node));
  extras_.push_back(std::move(iNode.extras));
}

std::string Glb::Bytes(const Json& iSceneExtras) const {
  std::ostringstream stream;
  tinygltf::TinyGLTF writer;
  if (!writer.WriteGltfSceneToStream(model_.get(), stream, false, true)) {
    throw std::runtime_error("the scene cannot be written as glTF");
  }
  return WithExtras(std::move(stream).str(), extras_, iSceneExtras);
}

}  // namespace biwplan
