#include <cctype>
#include <cstring>
#include <functional>
#include <set>

#include "host/component/ZefMetaClass.h"
#include "host/process/Process.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

constexpr char kRoot[] = "host/component/ZefBaseUnknown.h";

struct Answer {
  std::string what;  // the object and the interface, for findings
  ZefBaseUnknown* object;
  const InterfaceInfo& asked;
  ZefBaseUnknown* answer;
};

// Every interface of every object.
void ForEachAnswer(Bench& bench, const std::function<void(const Answer&)>& see) {
  for (const auto& [name, object] : bench.Everything()) {
    for (const InterfaceInfo& asked : AllInterfaces()) {
      const ZefBaseUnknown_var answer = AskFor(object, asked.identifier);
      if (answer) see({name + "'s " + asked.name, object, asked, answer.Get()});
    }
  }
}

void Reflexive(Bench& bench) {
  ForEachAnswer(bench, [&](const Answer& of) {
    bench.Expect(AskFor(of.answer, of.asked.identifier).Get() == of.answer,
                 of.what + " answers itself");
  });
}

void Symmetric(Bench& bench) {
  ForEachAnswer(bench, [&](const Answer& first) {
    for (const InterfaceInfo& other : AllInterfaces()) {
      const ZefBaseUnknown_var second = AskFor(first.answer, other.identifier);
      if (!second) continue;
      bench.Expect(AskFor(second, first.asked.identifier).Get() == first.answer,
                   first.what + " leads to " + other.name + " and back");
    }
  });
}

void Transitive(Bench& bench) {
  ForEachAnswer(bench, [&](const Answer& of) {
    for (const InterfaceInfo& other : AllInterfaces()) {
      bench.Expect(
          AskFor(of.object, other.identifier).Get() == AskFor(of.answer, other.identifier).Get(),
          of.what + " answers " + other.name + " as the object does");
    }
  });
}

void RootStable(Bench& bench) {
  ForEachAnswer(bench, [&](const Answer& of) {
    const ZefBaseUnknown* const identity = AskFor(of.object, IID_ZefBaseUnknown).Get();
    bench.Expect(identity != nullptr, of.what + " belongs to an object with an identity");
    for (int time = 0; time < 2; ++time) {
      bench.Expect(AskFor(of.answer, IID_ZefBaseUnknown).Get() == identity,
                   of.what + " answers the one identity for the root interface");
      bench.Expect(AskFor(of.answer, IID_IUnknown).Get() == identity,
                   of.what + " answers the one identity for IUnknown");
    }
  });
}

void ByName(Bench& bench) {
  ForEachAnswer(bench, [&](const Answer& of) {
    bench.Expect(Adopt(of.object->QueryInterface(of.asked.name)).Get() == of.answer,
                 of.what + " is the same by name and by identifier");
    bench.Expect(Adopt(of.answer->QueryInterface("ZefBaseUnknown")).Get() ==
                     AskFor(of.object, IID_ZefBaseUnknown).Get(),
                 of.what + " answers the identity by the name of the root interface");
  });
  for (const auto& [name, object] : bench.Everything()) {
    for (const InterfaceInfo& asked : AllInterfaces()) {
      if (AskFor(object, asked.identifier)) continue;
      bench.Expect(!Adopt(object->QueryInterface(asked.name)),
                   name + " answers " + asked.name + " neither by identifier nor by name");
    }
  }
}

void FailedQuery(Bench& bench) {
  for (const auto& [name, object] : bench.Everything()) {
    void* answer = object.Get();
    const HRESULT result =
        object->QueryInterface(NameIdentifier("an interface of nobody"), &answer);
    bench.Expect(Failed(result) && !answer, name + " fails and clears for an unknown identifier");
    bench.Expect(!object->QueryInterface("an interface of nobody"),
                 name + " answers null for an unknown name");
    bench.Expect(Failed(object->QueryInterface(IID_ZefBaseUnknown, nullptr)),
                 name + " fails without a place for the answer");
    for (const InterfaceInfo& asked : AllInterfaces()) {
      answer = object.Get();
      if (Succeeded(object->QueryInterface(asked.identifier, &answer))) {
        bench.Require(answer != nullptr, name + " answers what it says it answers");
        static_cast<ZefBaseUnknown*>(answer)->Release();
      } else {
        bench.Expect(!answer, name + " clears the pointer for " + asked.name);
      }
    }
  }
}

void Implementation(Bench& bench) {
  ForEachAnswer(bench, [&](const Answer& of) {
    bench.Expect(of.answer->GetImpl(0) == AskFor(of.object, IID_ZefBaseUnknown).Get(),
                 of.what + " gives the identity as implementation");
  });
}

void Equality(Bench& bench) {
  const auto all = bench.Everything();
  for (const Specimen& one : all) {
    bench.Expect(!one.object->IsNull() && !one.object->IsEqual(nullptr), one.name + " is not null");
    for (const Specimen& other : all) {
      const bool same = &one == &other;
      for (const InterfaceInfo& asked : AllInterfaces()) {
        const ZefBaseUnknown_var answer = AskFor(other.object, asked.identifier);
        if (!answer) continue;
        bench.Expect(
            (one.object->IsEqual(answer.Get()) == 1) == same,
            one.name + " equals itself alone, asked with " + asked.name + " of " + other.name);
      }
    }
  }
}

std::string InLowerCase(std::string name) {
  for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return name;
}

void LateClass(Bench& bench) {
  ForEachAnswer(bench, [&](const Answer& of) {
    const ZefMetaClass* const meta = of.object->GetMetaObject();
    bench.Require(meta && of.object->IsA(), of.what + " has a class");
    bench.Expect(of.answer->GetMetaObject() == meta, of.what + " gives the object's class");
    bench.Expect(std::strcmp(of.answer->IsA(), meta->GetClassName()) == 0,
                 of.what + " gives the name of the object's class");
    for (const ZefMetaClass* base = meta; base; base = base->GetBase()) {
      const std::string lower = InLowerCase(base->GetClassName());
      bench.Expect(lower == base->GetClassName() || of.answer->IsAKindOf(lower.c_str()) == 0,
                   of.what + " is of no kind that is spelled otherwise");
      bench.Expect(of.answer->IsAKindOf(base->GetClassName()) == 1,
                   of.what + " is of a kind with its class and bases");
    }
    bench.Expect(!of.answer->IsAKindOf(nullptr), of.what + " is of no kind without name");
  });
}

void ActivityClasses(Bench& bench) {
  for (ZefBaseUnknown* const activity : bench.Activities()) {
    bench.Ask<ZefISPPActivity>(activity);
    const bool logical = activity == bench.wait;
    const std::string name = bench.NameOf(activity);
    bench.Expect(static_cast<bool>(ZefISPPAbstractActivity_var(activity)),
                 name + " answers ZefISPPAbstractActivity, which ZefISPPActivity extends");
    bench.Expect(activity->IsAKindOf("Activity") == 1, name + " is a kind of \"Activity\"");
    bench.Expect((activity->IsAKindOf("PhysicalActivity") == 1) == !logical,
                 name + " is a kind of \"PhysicalActivity\" unless it is logical");
    bench.Expect((activity->IsAKindOf("LogicalActivity") == 1) == logical,
                 name + " is a kind of \"LogicalActivity\" if it is logical");
  }
}

void OutputClass(Bench& bench) {
  bench.Need(bench.output, "product outputs");
  bench.Equal(bench.output->IsA(), "ProductOutput", "the name of an output's class");
}

}  // namespace

std::vector<Check> IdentityChecks() {
  return {
      {{"identity.reflexive", kRoot, "An interface that is asked for itself answers itself."},
       &Reflexive},
      {{"identity.symmetric", kRoot, "An interface leads to another one and back."}, &Symmetric},
      {{"identity.transitive", kRoot, "Every interface answers what its object answers."},
       &Transitive},
      {{"identity.root", kRoot, "For the root interface an object answers one pointer, always."},
       &RootStable},
      {{"identity.by-name", kRoot, "A query by name gives what the query by identifier gives."},
       &ByName},
      {{"identity.failed-query", kRoot, "A query that fails says so and clears the pointer."},
       &FailedQuery},
      {{"identity.implementation", kRoot, "GetImpl(0) is the identity, from every interface."},
       &Implementation},
      {{"identity.equality", kRoot, "Two pointers are equal when they lead to one object."},
       &Equality},
      {{"identity.class", kRoot, "Every interface tells the late class of the object."},
       &LateClass},
      {{"identity.activity-class", "host/process/ZefISPPActivity.h",
        "Activities are of the classes by which filters and the update look for them."},
       &ActivityClasses},
      {{"identity.output-class", "host/process/ZefISPPProductIO.h",
        "The class of a product output is named \"ProductOutput\"."},
       &OutputClass},
  };
}

}  // namespace hostcheck
