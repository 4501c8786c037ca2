#include <functional>
#include <memory>

#include "tests/contract/World.h"
#include "tests/support/HostFailures.h"

namespace {

using namespace tests;
using List = ZefListValZefBaseUnknown_var;

using FailingObjectsTest = ReferenceAudit;

// Operations that no service of the library leads to with a host that fails.
TEST_F(FailingObjectsTest, WhatFailsAnswersNothingAndLeavesTheModelAsItWas) {
  World world;
  embedded::MfgAssembly& assembly = world.assembly;
  const struct {
    const char* name;
    std::function<bool()> succeeds;
  } operations[] = {
      {"GetFather", [&] { return Adopt(world.op10.GetFather()) == world.st10.Identity(); }},
      {"SetName", [&] { return Succeeded(assembly.SetName("Front")); }},
      {"GetName", [&] { return assembly.GetName() == "Front"; }},
      {"GetPartNumber", [&] { return assembly.GetPartNumber() == "Front"; }},
      {"GetProductText",
       [&] {
         ZefUnicodeString text;
         return Succeeded(assembly.GetProductText(text)) && text == "Front";
       }},
      {"AddChild", [&] { return Succeeded(assembly.AddChild(world.bolt.Identity())); }},
      {"GetChildrenCount", [&] { return assembly.GetChildrenCount() == 2; }},
      {"GetChildren", [&] { return std::unique_ptr<List>(assembly.GetChildren()) != nullptr; }},
      {"GetChildren into a list",
       [&] {
         List* children = nullptr;
         return Succeeded(assembly.GetChildren(children)) && std::unique_ptr<List>(children);
       }},
      {"GetAllChildren",
       [&] { return std::unique_ptr<List>(assembly.GetAllChildren("ZefIProduct")) != nullptr; }},
      {"GetReferenceProduct",
       [&] {
         ZefIProduct_var reference;
         return Succeeded(assembly.GetReferenceProduct(reference)) && reference;
       }},
      {"RemoveChild", [&] { return Succeeded(assembly.RemoveChild(world.bolt.Identity())); }},
  };
  for (const auto& [name, succeeds] : operations) {
    SCOPED_TRACE(name);
    const std::string before = world.Seen();
    {
      const ArmedFaults armed(1, false);
      EXPECT_FALSE(succeeds());
      EXPECT_EQ(FaultPoint::Struck(), 1);
    }
    EXPECT_EQ(world.Seen(), before);
    EXPECT_TRUE(succeeds());
  }
}

}  // namespace
