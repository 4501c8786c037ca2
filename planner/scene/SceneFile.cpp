#include "planner/scene/SceneFile.h"

#include "embedded/Error.h"
#include "embedded/storage/FileReplacement.h"
#include "planner/import/Values.h"

namespace biwplan {

namespace {

std::string Ending(const std::filesystem::path& file) { return Folded(file.extension().string()); }

}  // namespace

void RequireSceneFile(const std::filesystem::path& iFile) {
  if (Ending(iFile) == "glb") return;
  throw embedded::InputError(iFile.string() + ": a scene is written as .glb; end the name so");
}

std::size_t WriteScene(const SceneFile& iScene, const std::filesystem::path& iFile) {
  embedded::ReplaceFile(iFile, iScene.bytes);
  return iScene.bytes.size();
}

}  // namespace biwplan
