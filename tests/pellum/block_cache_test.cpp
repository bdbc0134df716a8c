#include "pellum/object/block_cache.h"
#include "pellum/text/equal.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

/// Blocks of all sizes up to beyond what is kept, filled to their last byte: one that is too small spoils its
/// neighbour.
std::vector<void*> TakeBlocks(unsigned char content) {
    std::vector<void*> blocks;
    for (std::size_t size = 1; size <= 300; ++size) {
        blocks.push_back(Pellum::AllocateBlock(size));
        std::memset(blocks.back(), content, size);
    }
    return blocks;
}

void ExpectContent(const std::vector<void*>& blocks, unsigned char content) {
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const auto* bytes = static_cast<const unsigned char*>(blocks[i]);
        EXPECT_EQ(std::string(bytes, bytes + i + 1), std::string(i + 1, static_cast<char>(content))) << i;
    }
}

void FreeBlocks(const std::vector<void*>& blocks) {
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        Pellum::FreeBlock(blocks[i], i + 1);
    }
}

TEST(BlockCache, GivesNoBlockToTwoOwners) {
    for (int round = 0; round < 3; ++round) {
        const std::vector<void*> first = TakeBlocks(0x11);
        const std::vector<void*> second = TakeBlocks(0x22);
        EXPECT_EQ(std::set<void*>(first.begin(), first.end()).size(), first.size());
        ExpectContent(first, 0x11);
        FreeBlocks(first);
        ExpectContent(second, 0x22);
        FreeBlocks(second);
    }
    Pellum::FreeBlock(nullptr, 32);
    Pellum::ReleaseCachedBlocks();
}

TEST(BlockCache, TakesAndGivesBlocksOfOtherThreadsAndOfOperatorNew) {
    std::vector<void*> blocks;
    std::thread([&] {
        FreeBlocks(TakeBlocks(0x33)); // kept, and freed with the thread
        blocks = TakeBlocks(0x44);
    }).join();
    ExpectContent(blocks, 0x44);
    for (void* block : blocks) {
        ::operator delete(block);
    }
    // More than a thread keeps.
    for (int i = 0; i < 2000; ++i) {
        Pellum::FreeBlock(::operator new(32), 32);
    }
    ::operator delete(Pellum::AllocateBlock(32));
    Pellum::ReleaseCachedBlocks();
}

TEST(EqualText, SeesADifferenceAtEveryPlaceAndNothingBehindTheEnd) {
    for (std::size_t size = 0; size < 70; ++size) {
        const std::string text(size, 'a');
        const std::vector<char> copy(text.begin(), text.end()); // ends where the text ends, for a sanitizer
        EXPECT_TRUE(Pellum::AreEqual(text, {copy.data(), copy.size()}));
        EXPECT_FALSE(Pellum::AreEqual(text, std::string(size + 1, 'a')));
        for (std::size_t i = 0; i < size; ++i) {
            std::string other = text;
            other[i] = 'b';
            EXPECT_FALSE(Pellum::AreEqual(text, other)) << size << ' ' << i;
        }
    }
}

} // namespace
