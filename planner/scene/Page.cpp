#include "planner/scene/Page.h"

#include <boost/archive/iterators/base64_from_binary.hpp>
#include <boost/archive/iterators/transform_width.hpp>
#include <cstddef>
#include <string_view>

#include "embedded/Error.h"
#include "embedded/storage/FileReplacement.h"
#include "planner/Resources.h"

namespace biwplan {

namespace {

constexpr std::string_view kMarker = "<!--SCENE-->";
constexpr std::size_t kMostPageBytes = std::size_t{64} << 20;

std::string Base64(std::string bytes) {
  using namespace boost::archive::iterators;
  using Letters = base64_from_binary<transform_width<std::string::const_iterator, 6, 8>>;
  const std::size_t missing = (3 - bytes.size() % 3) % 3;
  bytes.append(missing, '\0');
  std::string text(Letters(bytes.cbegin()), Letters(bytes.cend()));
  return text.replace(text.size() - missing, missing, missing, '=');
}

std::string Template() {
  const std::filesystem::path file = FindResource("viewer/scene.html");
  if (file.empty()) {
    throw embedded::InputError(
        "the page that shows scenes was not built; build biwplan anew where Node 18 or newer is "
        "installed with npm, or write the scene as .glb");
  }
  return embedded::ReadWholeFile(file, kMostPageBytes);
}

}  // namespace

std::string PageOf(const std::string& iGlb) {
  std::string page = Template();
  const std::size_t marker = page.find(kMarker);
  if (marker == std::string::npos || page.find(kMarker, marker + 1) != std::string::npos) {
    throw embedded::InputError(
        "the page that shows scenes is not as it was built; build biwplan anew");
  }
  return page.replace(marker, kMarker.size(),
                      "<script id=\"scene\" type=\"application/octet-stream;base64\">" +
                          Base64(iGlb) + "</script>");
}

}  // namespace biwplan
