#include "transfer/SlicePool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace palvera {
namespace {

TEST(SlicePoolTest, handsOutWhatWasGivenBackLastAndNothingTwice)
{
    SlicePool pool(700'000); // of which a block of memory holds two and a rest
    std::vector<SlicePool::Slice> slices;
    std::set<char*> begins;
    for (int i = 0; i < 9; ++i) {
        slices.push_back(pool.take());
        std::fill_n(slices.back().get(), pool.sliceSize(), char('a' + i));
        begins.insert(slices.back().get());
    }
    EXPECT_EQ(begins.size(), 9U);
    for (std::size_t i = 0; i < slices.size(); ++i)
        EXPECT_EQ(std::count(slices[i].get(), slices[i].get() + pool.sliceSize(), char('a' + i)), pool.sliceSize());
    auto* warm = slices[4].get();
    slices[2].reset();
    slices[4].reset();
    EXPECT_EQ(pool.take().get(), warm);
    EXPECT_EQ(pool.take().get(), warm) << "one slice serves as long as one is enough";
}

TEST(SlicePoolTest, cutsSlicesLargerThanABlock)
{
    SlicePool pool(5'000'000);
    auto first = pool.take(), second = pool.take();
    std::fill_n(first.get(), pool.sliceSize(), 'a');
    std::fill_n(second.get(), pool.sliceSize(), 'b');
    EXPECT_EQ(std::count(first.get(), first.get() + pool.sliceSize(), 'a'), pool.sliceSize());
}

} // namespace
} // namespace palvera
