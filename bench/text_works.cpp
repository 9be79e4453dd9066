#include "works.hpp"

#include <fl/filesystem/path.hpp>

#include "texts.hpp"

namespace bench {

namespace {

using fl::filesystem::upath;
namespace detail = fl::filesystem::detail;

/// A work on `text` against a copy of it.
template <typename Ours>
work against_copy(std::string name, double target, std::u16string const &text, Ours ours)
{
    return {std::move(name),
            target,
            {{"floor", times([text] {
                  std::u16string const copy = text;
                  keep(copy);
              })},
             {"ours", times(ours)}}};
}

std::string sized(char const *name, std::size_t size)
{
    return std::string(name) + ", " + std::to_string(size) + " units";
}

/// The ratios to reach for texts of 65, 251 and 2,001 units.
struct targets
{
    double small, middle, large;

    double at(std::size_t size) const
    {
        switch (size) {
        case 65:
            return small;
        case 251:
            return middle;
        case 2001:
            return large;
        default:
            return 0;
        }
    }
};

work native_form(char const *name, targets reach, std::size_t size, std::u16string const &text)
{
    return against_copy(sized(name, size), reach.at(size), text,
                        [text] { keep(detail::make_native_form(text)); });
}

void add_works_of_size(std::vector<work> &works, std::size_t size)
{
    std::u16string const text = pathname(size);
    upath const path(text);
    works.push_back(native_form("native form", {1.5, 1.5, 1.5}, size, text));
    works.push_back(
        native_form("native form of slashes", {2.5, 2.5, 2.5}, size, pathname(size, u"/")));
    works.push_back(native_form("native form of doubled separators", {2.5, 2.5, 2.5}, size,
                                pathname(size, u"\\\\")));
    works.push_back(
        against_copy(sized("walk of all elements", size), targets{2, 4, 15}.at(size), text, [path] {
            for (std::u16string const &element : path)
                keep(element);
        }));
    works.push_back(
        against_copy(sized("hash", size), 0, text, [path] { keep(std::hash<upath>()(path)); }));
}

} // namespace

std::vector<work> text_works()
{
    std::vector<work> works;
    for (std::size_t const size : text_sizes)
        add_works_of_size(works, size);
    std::u16string const text = pathname(65);
    upath const path(text);
    upath const head(pathname(41));
    std::u16string const tail = pathname(41).substr(18);
    works.push_back(against_copy("join to 65 units", 2.0, head.native() + u"\\" + tail,
                                 [head, tail] { keep(head / tail); }));
    works.push_back(
        against_copy("filename, 65 units", 0.8, text, [path] { keep(path.filename()); }));
    works.push_back(
        against_copy("parent, 65 units", 1.0, text, [path] { keep(path.parent_path()); }));
    works.push_back(
        against_copy("extension, 65 units", 0, text, [path] { keep(path.extension()); }));
    return works;
}

} // namespace bench
