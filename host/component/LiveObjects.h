#pragma once

#include <cstddef>
#include <typeinfo>
#include <vector>

// Memory of counted objects. Each block is known while its object lives, so that audits can count
// objects and a loader can ask whose code is still needed.

// Null when memory is exhausted.
void* AllocateObject(std::size_t iSize) noexcept;
void FreeObject(void* iObject) noexcept;

// For a class with memory of its own, which has this many bytes in front of each object.
inline constexpr std::size_t kObjectRecord = 2 * sizeof(void*);
// Makes a block known, which is aligned to `kObjectRecord`, and answers where its object goes. Null
// for null.
void* RecordObject(void* iBlock) noexcept;
// The other way round: answers the block, which is the caller's again.
void* ForgetObject(void* iObject) noexcept;

// Objects made with new that are alive, each counted once, whatever its number of interfaces.
long CountLiveObjects();

// The class of each of them that has its virtual table in [iBegin, iEnd), extensions included.
std::vector<const std::type_info*> ClassesOfObjectsWithCodeIn(const void* iBegin, const void* iEnd);
