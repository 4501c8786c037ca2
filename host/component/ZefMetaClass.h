#pragma once

#include <cstddef>
#include <string>

#include "host/component/Identifier.h"

// What a meta-object describes; the values are those of the platform's records.
enum ENUMTypeOfClass { TypeNothing = 0, Implementation = 1, TypeExtension = 2, TypeInterface = 8 };

// Run-time description of a class or an interface. Meta-objects are kept for ever; all texts are
// copied, so that they outlive the library that gave them.
class ZefMetaClass {
 public:
  // `iIID` null: the identifier is derived from the name.
  ZefMetaClass(const _GUID* iIID, const char* iName, ZefMetaClass* iBase, ZefMetaClass* iBase2,
               ENUMTypeOfClass iKind);
  ZefMetaClass(const ZefMetaClass&) = delete;
  ZefMetaClass& operator=(const ZefMetaClass&) = delete;

  const _GUID& GetClassId() const { return id_; }
  const char* GetClassName() const { return name_.c_str(); }
  // 1 for the own name or that of any base.
  int IsAKindOf(const char* iName) const;

  void SetFWname(const char* iFramework) { framework_ = iFramework ? iFramework : ""; }
  const char* GetFWname() const { return framework_.c_str(); }

  ENUMTypeOfClass GetKind() const { return kind_; }
  ZefMetaClass* GetBase() const { return base_; }
  // Late type that an extension class extends, as it was given; empty when none was.
  const std::string& GetExtendedType() const { return extendedType_; }
  int GetInstanceSize() const { return instanceSize_; }

  // Replaces what a class of this name said of itself when its library was loaded before.
  void Describe(ENUMTypeOfClass iKind, ZefMetaClass* iBase, const char* iExtendedType,
                const char* iFramework, int iInstanceSize);

  // Answers null when memory is exhausted.
  static void* operator new(std::size_t size) noexcept;
  static void* operator new(std::size_t, void* place) noexcept { return place; }
  static void operator delete(void* memory) noexcept;

 private:
  _GUID id_;
  std::string name_;
  ZefMetaClass* base_;
  ZefMetaClass* base2_;
  ENUMTypeOfClass kind_;
  std::string framework_;
  std::string extendedType_;
  int instanceSize_ = 0;
};
