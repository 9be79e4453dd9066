#include "byte_store.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace fl::simulation {

namespace {

constexpr std::size_t page = 0x10000; // as the store divides its bytes

std::string read(byte_store const &store, std::uint64_t offset, std::size_t count)
{
    std::string bytes(count, '#');
    bytes.resize(store.read(offset, bytes.data(), count));
    return bytes;
}

TEST(ByteStore, HoldsBytes)
{
    byte_store store("text");
    EXPECT_EQ(store.size(), 4U);
    EXPECT_EQ(store.text(), "text");
    store.write(2, "ams");
    EXPECT_EQ(store.text(), "teams");
    EXPECT_EQ(read(store, 3, 10), "ms");
    EXPECT_EQ(read(store, 5, 10), "") << "at the end";
    EXPECT_EQ(read(store, 50, 10), "") << "behind the end";
    EXPECT_EQ(byte_store().text(), "");
}

TEST(ByteStore, IsZeroWhereNothingWasWritten)
{
    byte_store store;
    store.write(3, "a");
    EXPECT_EQ(store.text(), std::string("\0\0\0a", 4));
    store.resize(6);
    EXPECT_EQ(store.text(), std::string("\0\0\0a\0\0", 6));
    store.write(3 * page, "b");
    EXPECT_EQ(store.size(), 3 * page + 1);
    EXPECT_EQ(read(store, 2 * page - 1, page + 2), std::string(page + 1, '\0') + 'b');
}

TEST(ByteStore, ForgetsWhatIsCut)
{
    for (std::size_t const size : {std::size_t{0}, std::size_t{1}, page - 1, page, page + 1}) {
        byte_store store(std::string(2 * page, 'x'));
        store.resize(size);
        store.resize(2 * page);
        EXPECT_EQ(store.text(), std::string(size, 'x') + std::string(2 * page - size, '\0'))
            << size;
    }
}

TEST(ByteStore, CopiesAreApart)
{
    byte_store store(std::string(page + 5, 'x'));
    byte_store copy = store;
    copy.write(0, "copy");
    store.write(page, "store");
    EXPECT_EQ(read(store, 0, 4), "xxxx");
    EXPECT_EQ(read(copy, 0, 4), "copy");
    EXPECT_EQ(read(store, page, 5), "store");
    EXPECT_EQ(read(copy, page, 5), "xxxxx");
    copy.resize(3);
    copy.resize(6);
    EXPECT_EQ(read(store, 0, 6), "xxxxxx");
    EXPECT_EQ(copy.text(), std::string("cop\0\0\0", 6));
}

TEST(ByteStore, MayBeLargerThanAnyMemory)
{
    byte_store store;
    store.resize(std::uint64_t{1} << 62);
    byte_store copy = store;
    copy.write((std::uint64_t{1} << 62) - 2, "end");
    EXPECT_EQ(copy.size(), (std::uint64_t{1} << 62) + 1);
    EXPECT_EQ(read(copy, (std::uint64_t{1} << 62) - 3, 9), std::string("\0end", 4));
    EXPECT_EQ(read(store, (std::uint64_t{1} << 62) - 3, 9), std::string(3, '\0'));
}

// Against a plain text, with copies held meanwhile.
TEST(ByteStore, DoesAsATextDoes)
{
    std::minstd_rand random(1);
    byte_store store;
    std::string text;
    for (int step = 0; step < 300; ++step) {
        std::size_t const offset = random() % (3 * page);
        byte_store const before = store;
        std::string const text_before = text;
        if (random() % 4 == 0) {
            store.resize(offset);
            text.resize(offset);
        } else {
            std::string const bytes(1 + random() % page, static_cast<char>('a' + step % 26));
            store.write(offset, bytes);
            text.resize(std::max(text.size(), offset + bytes.size()));
            text.replace(offset, bytes.size(), bytes);
        }
        ASSERT_TRUE(store.text() == text) << step;
        ASSERT_TRUE(before.text() == text_before) << step;
    }
}

} // namespace

} // namespace fl::simulation
