#include <filesystem>

#include "embedded/Error.h"
#include "embedded/scene/SceneText.h"
#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Text.h"
#include "planner/scene/SceneFile.h"

namespace biwplan {

namespace {

Json DescribeNode(const embedded::SceneNode& node) {
  Json data = {{"depth", node.depth}, {"kind", node.kind}, {"name", node.name}};
  if (node.place) data["position"] = {node.place->GetX(), node.place->GetY(), node.place->GetZ()};
  if (node.colour) data["colour"] = *node.colour;
  data["hidden"] = node.hidden;
  return data;
}

// Writes what a viewer shows, in the name of the document.
Json WriteFile(Session& session, const embedded::Viewer& viewer, const std::string& file) {
  RequireSceneFile(file);
  std::error_code error;
  if (std::filesystem::equivalent(file, session.File(), error)) {
    throw embedded::InputError(file + " is the document; name another file for the scene");
  }
  const SceneFile scene = DrawScene(session.Document(), viewer, session.File().stem().string());
  const std::size_t bytes = WriteScene(scene, file);
  return {{"file", file},
          {"parts", scene.parts},
          {"welds", scene.welds},
          {"labels", scene.labels},
          {"bytes", bytes}};
}

std::string FileInWords(const Json& data) {
  const auto count = [&data](const char* field) { return data.at(field).get<std::size_t>(); };
  return Printable(data.at("file").get<std::string>()) + ": " + Counted(count("parts"), "part") +
         ", " + Counted(count("welds"), "weld") + ", " + Counted(count("labels"), "label") + "; " +
         std::to_string((count("bytes") + 1023) / 1024) + " KiB\n";
}

class Scene : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Option(NameKind::File, "--output", "FILE", file_,
                    "Writes it as a picture in 3D, glTF (.glb), instead of printing it.");
  }

  Answer Run(Session& ioSession) override {
    ioSession.Document();
    const embedded::Viewer& viewer = ioSession.Application().MainViewer();
    if (!file_.empty()) return {WriteFile(ioSession, viewer, file_)};
    scene_ = embedded::SceneOf(viewer);
    Answer answer;
    Json& nodes = answer.data["nodes"] = Json::array();
    for (const embedded::SceneNode& node : scene_.nodes) nodes.push_back(DescribeNode(node));
    answer.data["highlighted"] = scene_.highlighted;
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    return file_.empty() ? TextOf(scene_) : FileInWords(iData);
  }

 private:
  std::string file_;
  embedded::SceneTree scene_;
};

}  // namespace

void AddSceneCommands(CommandTable& ioTable) {
  ioTable.Add<Scene>("scene", "Prints what the 3D view shows, or writes it as a picture.");
}

}  // namespace biwplan
