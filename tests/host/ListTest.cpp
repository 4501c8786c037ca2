#include <algorithm>
#include <random>

#include "host/values/Values.h"
#include "tests/host/Step.h"

namespace {

using tests::MakeStep;
using List = ZefListValZefBaseUnknown_var;
using Handles = std::vector<ZefBaseUnknown_var>;

List ListOf(const Handles& elements) {
  List made;
  for (const auto& element : elements) made.Append(element);
  return made;
}

class ListTest : public tests::ReferenceAudit {
 protected:
  ListTest() {
    for (int i = 0; i < 60; ++i) steps.push_back(MakeStep());
  }
  void TearDown() override {
    steps.clear();
    ReferenceAudit::TearDown();
  }
  Handles steps;
};

TEST_F(ListTest, IntersectionAndRemovalKeepOrderAndMultiplicity) {
  const auto &a = steps[0], &b = steps[1], &c = steps[2];
  List common = ListOf({c});
  List::Intersection(ListOf({b, nullptr, a, c, b, a}), ListOf({a, b, nullptr}), common);
  EXPECT_EQ(common, ListOf({b, nullptr, a, b, a}));
  common.Remove(ListOf({b, c}));
  EXPECT_EQ(common, ListOf({nullptr, a, a}));
  common.RemoveValue(a);
  common.Append(common);
  EXPECT_EQ(common, ListOf({nullptr, a, nullptr, a}));
  common.Remove(common);
  EXPECT_EQ(common.Size(), 0);
}

TEST_F(ListTest, AWalkPassesOverWhatDoesNotAnswerAndSeesTheListGrow) {
  AnswerInterface(steps[1].Get(), IID_ZefISPPItem, false);
  List list = ListOf({nullptr, steps[0], steps[1], steps[2]});
  Handles met;
  for (const auto& item : Each<ZefISPPItem>(list)) {
    met.push_back(item);
    if (met.size() < 3) list.Append(steps[3]);
    if (met.size() == 3) list.RemoveAll();
  }
  EXPECT_EQ(met, (Handles{steps[0], steps[2], steps[3]}));
  for (const auto& item : Each<ZefISPPItem>(static_cast<const List*>(nullptr))) FAIL() << &item;
  met.clear();
  const unsigned int before = steps[0]->ReferenceCount();
  for (const auto& item : Each<ZefISPPItem>(ListOf(steps))) {
    EXPECT_EQ(steps[0]->ReferenceCount(), before + 1) << "of the walk or of what it met";
    met.push_back(item);
  }
  EXPECT_EQ(met.size(), 59u) << "a list of its own, given back element by element";
}

TEST_F(ListTest, RandomOperationsGiveWhatAPlainModelGives) {
  steps.push_back(nullptr);
  std::mt19937 random(20240611);
  const auto any = [&] { return steps[random() % steps.size()]; };
  List list;
  Handles model;
  const auto locate = [&](const ZefBaseUnknown_var& element, int start) {
    const auto from = model.begin() + std::clamp(start - 1, 0, static_cast<int>(model.size()));
    const auto found = std::find(from, model.end(), element);
    return found == model.end() ? 0 : static_cast<int>(found - model.begin()) + 1;
  };
  const auto remove = [&](int position) {
    if (position >= 1 && position <= list.Size()) model.erase(model.begin() + position - 1);
  };
  int largest = 0;
  for (int i = 0; i < 30000 && !HasFailure(); ++i) {
    const auto operation = random() % 100;
    const Handles some = {any(), any()};
    const int position = static_cast<int>(random() % (model.size() + 3)) - 1;
    if (operation < 38) {
      list.Append(some[0].Get());
      model.push_back(some[0]);
    } else if (operation < 68) {
      EXPECT_EQ(list.Locate(ZefISPPItem_var(some[0]), position), locate(some[0], position));
      EXPECT_EQ(list.Locate(some[1]), locate(some[1], 1));
    } else if (operation < 84) {
      const int removed = operation < 77 ? list.Size() : position;
      remove(removed);
      list.RemovePosition(removed);
    } else if (operation < 94) {
      remove(locate(some[0], 1));
      list.RemoveValue(some[0]);
    } else if (operation < 96) {
      list.Remove(ListOf(some));
      std::erase_if(model, [&](const auto& e) { return e == some[0] || e == some[1]; });
    } else if (operation < 97) {
      const bool isThere = position >= 1 && position <= list.Size();
      auto* const element = isThere ? &model[static_cast<std::size_t>(position - 1)] : nullptr;
      EXPECT_EQ(list.Take(position), element ? std::exchange(*element, nullptr) : nullptr);
    } else if (operation < 99) {
      list.Append(ListOf(some));
      model.insert(model.end(), some.begin(), some.end());
      List taken = std::move(list);
      list.Append(some[0]);
      EXPECT_TRUE(list.Size() == 1 && list.Locate(some[0]) == 1);
      list = std::move(taken);
    } else if (list.Size() > 150) {
      list.RemoveAll();
      model.clear();
    }
    EXPECT_EQ(list.Size(), static_cast<int>(model.size()));
    EXPECT_TRUE(!list[0] && !list[list.Size() + 1]);
    EXPECT_TRUE(i % 16 != 0 || list == ListOf(model)) << "after operation " << i;
    largest = std::max(largest, list.Size());
  }
  EXPECT_GT(largest, 64) << "both ways to look up are walked";
}

TEST_F(ListTest, ListsOfPointersTakeAndGiveBackNothing) {
  ZefBaseUnknown* const step = steps[0].Get();
  {
    _SEQUENCE_ZefBaseUnknown_ptr sequence;
    for (int i = 0; i < 2; ++i) sequence.append(step);
    sequence[0] = nullptr;
    EXPECT_TRUE(sequence.length() == 2 && sequence[1] == step);
    ZefListPtrIUnknown pointers;
    pointers.Append(step);
    EXPECT_TRUE(pointers[1] == step && !pointers[0] && !pointers[2]);
  }
  EXPECT_EQ(step->ReferenceCount(), 1u);
}

TEST(PointerArrayTest, DoublesAndIsSearchedFromTheEnd) {
  const int capacities[] = {1, 2, 4, 4, 8};
  list<const int> array;
  for (const int& capacity : capacities) {
    array.Append(&capacity);
    EXPECT_EQ(array.Capacity(), capacity);
    EXPECT_EQ(array.FreePlaces(), capacity - array.Size());
  }
  array.Append(&capacities[1]);
  EXPECT_EQ(array.Locate(&capacities[1]), 5);
  array.RemoveIndex(5);
  array.RemoveIndex(0);
  EXPECT_EQ(array.Locate(&capacities[1]), 0);
  EXPECT_EQ(array.Locate(&capacities[0]), -1);
  EXPECT_EQ(array[4], nullptr);
  array.Reset();
  EXPECT_EQ(array.Size() + array.Capacity() + array.FreePlaces(), 0);
}

}  // namespace
