#pragma once

#include "pellum/export.h"

#include <cstddef>

/// Storage for the many small objects of values. Each thread keeps some of the blocks that it frees and gives
/// them out again, which takes a few instructions; messages are made and thrown away in great numbers.
///
/// Every block is one of `operator new`, at least as large as was asked for: whoever owns it may give it to
/// `operator delete` instead. Blocks of `operator new` from elsewhere may be freed here when they have the
/// size rounded up to a multiple of 16: they are given out again for any size up to that. A thread keeps at
/// most 16 KiB of blocks of each size, up to 256 bytes, and gives them back when it ends. Builds with a
/// sanitizer, debug builds and Windows keep none, so that misuse is found, and because a thread's own data
/// are slow there.
namespace Pellum {

/// A block of at least `size` bytes, aligned as by `operator new`; null when out of memory.
PELLUM_API void* AllocateBlock(std::size_t size) noexcept;
/// The same, filled with zeros, which the optimiser can not drop: it is kept from knowing of them, also when
/// linking. A constructor begins the life of an object, though, so whoever makes one here whose constructor
/// leaves members alone has to hide it once more afterwards (`Tavik::KeepStorage`), or compile with
/// `-flifetime-dse=1`.
PELLUM_API void* AllocateZeroedBlock(std::size_t size) noexcept;
/// Frees a block that was allocated with the same size. Null does nothing.
PELLUM_API void FreeBlock(void* block, std::size_t size) noexcept;
/// Gives back what the calling thread keeps, texts (see `text_cache.h`) included. For threads that have done
/// their work but do not end.
PELLUM_API void ReleaseCachedBlocks() noexcept;

} // namespace Pellum
