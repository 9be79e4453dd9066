// How often each text function takes memory: for its result, where that doesn't fit into a string
// as it is, and for nothing else.

#include <fl/filesystem/path.hpp>

#include "support/allocations.hpp"
#include "support/names.hpp"

#include <functional>

namespace fl::filesystem::tests {
namespace {

// Every part of it is longer than what a string holds without allocating.
std::u16string const text =
    uR"(\\a-rather-long-server\a-rather-long-share\directory.d\a-name.extension)";
std::u16string const dirty = uR"(C:/directory//subdirectory//a-name.extension/)";
std::u16string const extension = u"another-extension";
std::u16string const addition = uR"(a-subdirectory\another-name.extension)";
upath const path(text);
upath const short_path(u"C:\\a");

struct cost
{
    char const *function;
    std::function<void()> call;
    std::size_t allocations;
    char const *why;
};

/// Calls that only read, or make something new.
cost const costs[] = {
    {"get_root_path_length", [] { detail::get_root_path_length(text); }, 0, "a number"},
    {"is_absolute", [] { detail::is_absolute(text); }, 0, "a word"},
    {"is_absolute_path_when_expanded", [] { detail::is_absolute_path_when_expanded(text); }, 0,
     "a word"},
    {"extract_root_name", [] { detail::extract_root_name(text); }, 1, "the result"},
    {"extract_root_directory", [] { detail::extract_root_directory(text); }, 0, "one unit"},
    {"extract_root_path", [] { detail::extract_root_path(text); }, 1, "the result"},
    {"extract_relative_path", [] { detail::extract_relative_path(text); }, 1, "the result"},
    {"extract_parent_path", [] { detail::extract_parent_path(text); }, 1, "the result"},
    {"extract_filename", [] { detail::extract_filename(text); }, 1, "the result"},
    {"extract_stem", [] { detail::extract_stem(addition); }, 1, "the result"},
    {"extract_extension", [] { detail::extract_extension(text); }, 1, "the result"},
    {"extract_first_element",
     [] { detail::extract_first_element(text, detail::get_root_path_length(text)); }, 1,
     "the result"},
    {"extract_pathname_elements", [] { detail::extract_pathname_elements(addition); }, 4,
     "four results"},
    {"make_native_form", [] { detail::make_native_form(text); }, 1, "the result"},
    {"make_native_form of a dirty text", [] { detail::make_native_form(dirty); }, 2,
     "the result, and the same at its true size"},
    {"make_generic_form", [] { detail::make_generic_form(text); }, 1, "the result"},
    {"make_expanded_path", [] { detail::make_expanded_path(text); }, 1, "the result"},
    {"upath(text)", [] { upath const made(text); }, 1, "its text"},
    {"copy of a path", [] { upath const copy = path; }, 1, "its text"},
    {"path / path", [] { upath const joined = path / upath(); }, 1, "its text"},
    {"path / text", [] { upath const joined = path / addition; }, 1, "its text"},
    {"path / dirty text", [] { upath const joined = path / u"a//rather-dirty-text"; }, 3 + 1,
     "the literal as a text, its native form, that at its true size, and the result"},
    {"parent", [] { upath const parent = path.parent(); }, 1, "its text"},
    {"begin and end", [] { static_cast<void>(short_path.begin() != short_path.end()); }, 0,
     "short elements"},
    {"c_str", [] { static_cast<void>(path.c_str()); }, 0, "the text that is there"},
    {"wstring", [] { static_cast<void>(path.wstring()); }, 1, "the result"},
    {"u16string", [] { static_cast<void>(path.u16string()); }, 1, "the result"},
    {"compare", [] { static_cast<void>(path.compare(short_path)); }, 0, "a number"},
    {"hash", [] { static_cast<void>(std::hash<upath>()(path)); }, 0, "a number"},
    {"is_absolute of a path", [] { static_cast<void>(path.is_absolute()); }, 0, "a word"},
};

TEST(TextCosts, OneAllocationForAResultAndNoneForAnythingElse)
{
    for (cost const &row : costs)
        EXPECT_EQ(allocations_of(row.call), row.allocations) << row.function << ": " << row.why;
}

/// What `change` takes of a text that has no room left.
template <typename Change>
std::size_t cost_of_change(std::u16string changed, Change change)
{
    changed.shrink_to_fit();
    return allocations_of([&] { change(changed); });
}

TEST(TextCosts, WhatChangesATextTakesRoomForWhatIsAddedAndForNothingElse)
{
    EXPECT_EQ(
        cost_of_change(text, [](auto &base) { detail::concatenate_pathname(base, addition); }), 1U);
    EXPECT_EQ(cost_of_change(text, [](auto &changed) { detail::remove_filename(changed); }), 0U);
    EXPECT_EQ(
        cost_of_change(text, [](auto &changed) { detail::replace_extension(changed, extension); }),
        1U);
    std::u16string base = text;
    base.reserve(text.size() + 1 + addition.size());
    EXPECT_EQ(allocations_of([&] { detail::concatenate_pathname(base, addition); }), 0U)
        << "where there is room";
}

TEST(TextCosts, APathTakesATextIntoTheRoomThatItHas)
{
    upath joined = path;
    joined /= addition;
    joined.remove_filename();
    EXPECT_EQ(allocations_of([&] { joined /= u"name"; }), 0U);
    EXPECT_EQ(allocations_of([&] { joined = path; }), 0U);
    EXPECT_EQ(allocations_of([&] { joined = text; }), 1U) << "the form, which then is the path's";
}

void walk(upath const &all)
{
    for (std::u16string const &element : all)
        static_cast<void>(element);
}

TEST(TextCosts, AWalkTakesMemoryOnlyWhereAnElementIsLongerThanAllBeforeIt)
{
    upath const names(uR"(C:\name\n\name\na\name\nam\name)");
    EXPECT_EQ(allocations_of([&] { walk(names); }), 0U) << "of up to seven units each";
    upath const long_names(uR"(C:\rather-long-name\short\a-longer-name\n\equally-longname)");
    EXPECT_EQ(allocations_of([&] { walk(long_names); }), 1U) << "the longest comes first";
    EXPECT_EQ(allocations_of([&] {
                  upath::iterator element = long_names.end();
                  while (element != long_names.begin())
                      --element;
              }),
              1U)
        << "backwards";
}

} // namespace
} // namespace fl::filesystem::tests
