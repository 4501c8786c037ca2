#include "planner/scene/SceneFile.h"

#include "embedded/Error.h"
#include "embedded/storage/FileReplacement.h"
#include "planner/import/Values.h"
#include "planner/scene/Page.h"

namespace biwplan {

namespace {

std::string Ending(const std::filesystem::path& file) { return Folded(file.extension().string()); }

}  // namespace

void RequireSceneFile(const std::filesystem::path& iFile) {
  if (Ending(iFile) == "glb" || Ending(iFile) == "html") return;
  throw embedded::InputError(iFile.string() +
                             ": a scene is written as .glb or .html; end the name so");
}

std::size_t WriteScene(const SceneFile& iScene, const std::filesystem::path& iFile) {
  const bool isPage = Ending(iFile) == "html";
  const std::string& bytes = isPage ? PageOf(iScene.bytes) : iScene.bytes;
  embedded::ReplaceFile(iFile, bytes);
  return bytes.size();
}

}  // namespace biwplan
