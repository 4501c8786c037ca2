#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "embedded/model/Document.h"
#include "embedded/scene/SceneTree.h"

namespace biwplan {

// InputError unless the file's name ends in .glb or .html.
void RequireSceneFile(const std::filesystem::path& iFile);

struct SceneFile {
  std::size_t parts = 0;
  std::size_t welds = 0;
  std::size_t labels = 0;
  std::string bytes{};  // binary glTF
};

// The picture of what a viewer shows of the document, which goes by that name. InputError, which
// names the file, for a mesh that cannot be read.
SceneFile DrawScene(const embedded::Document& iDocument, const embedded::Viewer& iViewer,
                    const std::string& iName);

// Writes the picture, whole or not at all; in HTML as a page that shows it. Answers its size.
std::size_t WriteScene(const SceneFile& iScene, const std::filesystem::path& iFile);

}  // namespace biwplan
