#include <filesystem>
#include <optional>

#include "embedded/Error.h"
#include "embedded/scene/SceneText.h"
#include "host/component/Interruption.h"
#include "host/visu/Visu.h"
#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/names/Items.h"
#include "planner/report/Text.h"
#include "planner/scene/SceneFile.h"
#include "visu/TuvBIWPreviewWindow.h"

namespace biwplan {

namespace {

Json DescribeNode(const embedded::SceneNode& node) {
  Json data = {{"depth", node.depth}, {"kind", node.kind}, {"name", node.name}};
  if (node.place) data["position"] = {node.place->GetX(), node.place->GetY(), node.place->GetZ()};
  if (node.colour) data["colour"] = *node.colour;
  data["hidden"] = node.hidden;
  return data;
}

constexpr char kOutputHelp[] =
    "Writes a picture in 3D: glTF for any viewer (.glb), or a page for any browser (.html).";

// Writes what a viewer shows, in the name of the document, unless that is nothing.
Answer WriteFile(Session& session, const embedded::Viewer& viewer, const std::string& file) {
  RequireSceneFile(file);
  std::error_code error;
  if (std::filesystem::equivalent(file, session.File(), error)) {
    throw embedded::InputError(file + " is the document; name another file for the scene");
  }
  const SceneFile scene = DrawScene(session.Document(), viewer, session.File().stem().string());
  const bool isEmpty = scene.parts + scene.welds + scene.labels == 0;
  const std::size_t bytes = isEmpty ? 0 : WriteScene(scene, file);
  return {{{"file", file},
           {"parts", scene.parts},
           {"welds", scene.welds},
           {"labels", scene.labels},
           {"bytes", bytes}},
          isEmpty};
}

std::string FileInWords(const Json& data) {
  const auto count = [&data](const char* field) { return data.at(field).get<std::size_t>(); };
  if (count("bytes") == 0) return "nothing to show, no file written\n";
  return Printable(data.at("file").get<std::string>()) + ": " + Counted(count("parts"), "part") +
         ", " + Counted(count("welds"), "weld") + ", " + Counted(count("labels"), "label") + "; " +
         std::to_string((count("bytes") + 1023) / 1024) + " KiB\n";
}

class Scene : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Option(NameKind::File, "--output", "FILE", file_, kOutputHelp);
  }

  Answer Run(Session& ioSession) override {
    ioSession.Document();
    const embedded::Viewer& viewer = ioSession.Application().MainViewer();
    if (!file_.empty()) return WriteFile(ioSession, viewer, file_);
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

class Preview : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.OneOrMore(NameKind::Weld, "ITEM", words_,
                       "Parts, assemblies, and welds as names, patterns or FIRST..LAST.");
    ioSyntax.RequiredOption(NameKind::File, "--output", "FILE", file_, kOutputHelp);
    ioSyntax.Flag("--own-scene", hasOwnScene_,
                  "Shows further graphics of the items in a scene apart, not their own ones.");
  }

  Answer Run(Session& ioSession) override {
    const ZefListValZefBaseUnknown_var items = Items(ioSession);
    // The window asks the host when it goes.
    std::optional<Interruption::Deferral> whole;
    const auto window = Make<TuvBIWPreviewWindow>(ioSession.Application().CurrentEditor(),
                                                  static_cast<unsigned char>(hasOwnScene_));
    window->Visualize(items, IID_ZefI3DGeoVisu);
    window->VisuWithReframeOnItems(items);
    Answer answer =
        WriteFile(ioSession, dynamic_cast<embedded::Viewer&>(*window->GetViewer()), file_);
    whole.emplace();
    return answer;
  }

  std::string InWords(const Json& iData) const override { return FileInWords(iData); }

 private:
  ZefListValZefBaseUnknown_var Items(Session& session) const {
    const Names names = session.Find();
    ZefListValZefBaseUnknown_var items;
    for (const std::string& word : words_) {
      const ZefBaseUnknown_var feature = names.FeatureOf(word);
      if (feature) {
        items.Append(feature);
      } else if (word.find_first_of("*?") != std::string::npos || word.find("..") != word.npos) {
        items.Append(names.Welds({word}));
      } else {
        items.Append(ItemOf(session.Document(), word));
      }
    }
    return items;
  }

  std::vector<std::string> words_;
  std::string file_;
  bool hasOwnScene_ = false;
};

}  // namespace

void AddSceneCommands(CommandTable& ioTable) {
  ioTable.Add<Scene>("scene", "Prints what the 3D view shows, or writes it as a picture.");
  ioTable.Add<Preview>("preview", "Writes a picture of chosen items.");
}

}  // namespace biwplan
