#include "planner/check/LoadedParts.h"

#include <algorithm>
#include <boost/graph/adjacency_list.hpp>
#include <boost/graph/strong_components.hpp>
#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "host/component/Interruption.h"
#include "host/values/Each.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

using embedded::Activity;
using Objects = ZefListValZefBaseUnknown_var;
using Identity = ZefBaseUnknown*;

constexpr std::size_t kBlock = 64;

// What one place of the flow has of a block of parts, one bit for each.
struct Bits {
  // Items and outputs themselves.
  std::uint64_t direct = 0;
  // What is below an item.
  std::uint64_t below = 0;

  void Add(const Bits& other) {
    direct |= other.direct;
    below |= other.below;
  }
};

// The places of each activity, and which of them have all that others have: a graph in which a
// place points at those that it includes.
class Places {
 public:
  // Its items; its items and outputs; those of all activities below it; all that comes before it.
  enum Place : std::size_t { Items, Own, Below, Before, Count };

  explicit Places(const embedded::Document& document)
      : graph_(document.Activities().size() * Count) {
    for (const auto& activity : document.Activities())
      numbers_.emplace(&*activity, numbers_.size());
    for (const auto& activity : document.Activities()) AddIncluded(*activity);
    Order();
  }

  std::size_t At(const Activity& activity, Place place) const {
    return numbers_.at(&activity) * Count + place;
  }
  // The graph's knots in an order in which everything that is included stands first. Places that
  // include each other are one knot.
  std::size_t KnotOf(std::size_t place) const { return knots_[place]; }

  // Adds to each knot what it includes.
  void HandOn(std::vector<Bits>& ioKnots) const {
    for (const std::size_t place : order_) {
      for (const auto included : boost::make_iterator_range(adjacent_vertices(place, graph_))) {
        if (knots_[included] != knots_[place])
          ioKnots[knots_[place]].Add(ioKnots[knots_[included]]);
      }
    }
  }
  std::size_t Size() const { return knots_.size(); }

 private:
  using Graph = boost::adjacency_list<boost::vecS, boost::vecS, boost::directedS>;

  void Include(std::size_t place, std::size_t included) { add_edge(place, included, graph_); }

  void AddIncluded(const Activity& activity) {
    Include(At(activity, Own), At(activity, Items));
    for (const Activity* const child : activity.Children()) {
      Include(At(activity, Below), At(*child, Own));
      Include(At(activity, Below), At(*child, Below));
    }
    for (const Activity* const previous : activity.Previous()) {
      for (const Place place : {Own, Below, Before}) {
        Include(At(activity, Before), At(*previous, place));
      }
    }
    // What begins a flow has before it what its parent has.
    if (activity.Previous().empty() && activity.Parent()) {
      Include(At(activity, Before), At(*activity.Parent(), Before));
    }
  }

  // A knot's number is greater than those of all that it includes.
  void Order() {
    knots_.resize(num_vertices(graph_));
    boost::strong_components(graph_, boost::make_iterator_property_map(
                                         knots_.begin(), get(boost::vertex_index, graph_)));
    order_.resize(knots_.size());
    for (std::size_t i = 0; i < order_.size(); ++i) order_[i] = i;
    std::stable_sort(order_.begin(), order_.end(),
                     [this](std::size_t a, std::size_t b) { return knots_[a] < knots_[b]; });
  }

  std::unordered_map<const Activity*, std::size_t> numbers_;
  Graph graph_;
  std::vector<std::size_t> knots_;
  std::vector<std::size_t> order_;
};

struct Arrival {
  std::size_t place;
  bool isDirect;
};

class Answers {
 public:
  Answers(embedded::Document& document, const std::vector<LoadedQuestion>& questions)
      : document_(document), questions_(questions), places_(document) {
    for (const LoadedQuestion& question : questions) arrivals_[question.part];
    for (const auto& activity : document_.Activities()) AddArrivals(*activity);
  }

  std::vector<bool> Run() {
    std::vector<std::size_t> order(questions_.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
      return questions_[a].part < questions_[b].part;
    });
    answers_.assign(questions_.size(), false);
    for (auto next = order.cbegin(); next != order.cend();) next = AnswerBlock(next, order.cend());
    return std::move(answers_);
  }

 private:
  using Position = std::vector<std::size_t>::const_iterator;

  void Arrive(Identity part, std::size_t place, bool isDirect) {
    const auto asked = arrivals_.find(part);
    if (asked != arrivals_.end()) asked->second.push_back({place, isDirect});
  }

  void AddArrivals(Activity& activity) {
    const ZefISPPActivity_var handle = activity.Identity();
    Objects items;
    Objects* list = &items;
    TuvBIWServices::GetAssignedParts(handle, list);
    for (const auto& part : Each<ZefBaseUnknown>(items)) {
      const bool isDirect = !activity.LinksOf(part.Get()).empty();
      Arrive(part.Get(), places_.At(activity, Places::Items), isDirect);
    }
    Objects outputs;
    list = &outputs;
    TuvBIWServices::GetProductOutputsFromActivity(handle, list);
    list = &belowOutputs_;
    for (const auto& output : Each<ZefIProduct>(outputs)) {
      Arrive(ZefBaseUnknown_var(output).Get(), places_.At(activity, Places::Own), true);
      TuvBIWServices::GetAllChildParts(output, list);
    }
  }

  // Answers the questions about up to 64 parts, from `next` on; the position behind them.
  Position AnswerBlock(Position next, Position end) {
    Interruption::Check();
    std::vector<Identity> parts;
    Position last = next;
    for (; last != end; ++last) {
      const Identity part = questions_[*last].part;
      if (!parts.empty() && parts.back() == part) continue;
      if (parts.size() == kBlock) break;
      parts.push_back(part);
    }
    const std::vector<Bits> knots = BlockOf(parts);
    std::size_t number = 0;
    for (; next != last; ++next) {
      if (questions_[*next].part != parts[number]) ++number;
      answers_[*next] = IsLoaded(questions_[*next], knots, std::uint64_t{1} << number);
    }
    return last;
  }

  std::vector<Bits> BlockOf(const std::vector<Identity>& parts) const {
    std::vector<Bits> knots(places_.Size());
    for (std::size_t i = 0; i < parts.size(); ++i) {
      for (const Arrival& arrival : arrivals_.at(parts[i])) {
        Bits& bits = knots[places_.KnotOf(arrival.place)];
        (arrival.isDirect ? bits.direct : bits.below) |= std::uint64_t{1} << i;
      }
    }
    places_.HandOn(knots);
    return knots;
  }

  bool IsLoaded(const LoadedQuestion& question, const std::vector<Bits>& knots, std::uint64_t bit) {
    Bits all;
    for (const auto place : {Places::Items, Places::Below, Places::Before}) {
      all.Add(knots[places_.KnotOf(places_.At(*question.activity, place))]);
    }
    if (all.direct & bit) return true;
    if (!(all.below & bit)) return false;
    // What was listed as an output before is skipped as an item, together with all below it: then
    // the order in which the flow is walked decides.
    const ZefBaseUnknown_var part = question.part;
    return belowOutputs_.Locate(part) == 0 || ListedAt(*question.activity).Locate(part) != 0;
  }

  const Objects& ListedAt(Activity& activity) {
    const auto [entry, isNew] = listed_.try_emplace(&activity);
    if (isNew) entry->second = LoadedAt(activity);
    return entry->second;
  }

  embedded::Document& document_;
  const std::vector<LoadedQuestion>& questions_;
  Places places_;
  std::unordered_map<Identity, std::vector<Arrival>> arrivals_;
  Objects belowOutputs_;
  std::unordered_map<const Activity*, Objects> listed_;
  std::vector<bool> answers_;
};

}  // namespace

std::vector<bool> AreLoaded(embedded::Document& iDocument,
                            const std::vector<LoadedQuestion>& iQuestions) {
  if (iQuestions.empty()) return {};
  return Answers(iDocument, iQuestions).Run();
}

}  // namespace biwplan
