#include "standard/lexical.hpp"
#include "standard/filesystem.hpp"

#include "standard/roots.hpp"

#include <algorithm>

namespace fl::filesystem::detail::standard {

namespace {

constexpr std::wstring_view root_directory = L"\\";
constexpr std::wstring_view dot = L".";
constexpr std::wstring_view dot_dot = L"..";

bool has_root_directory(std::wstring_view text)
{
    return is_separator(unit_at(text, root_name_length(text)));
}

/// The names behind the root. Empty ones between separators are none.
std::vector<std::wstring_view> names_of(std::wstring_view text)
{
    std::vector<std::wstring_view> names;
    std::size_t at = skip_separators(text, root_name_length(text));
    while (at < text.size()) {
        std::size_t const end = find_separator(text, at);
        names.push_back(text.substr(at, end - at));
        at = skip_separators(text, end);
    }
    return names;
}

/// Of a text that isn't empty.
bool ends_in_separator(std::wstring_view text)
{
    return is_separator(text.back());
}

/// What is left of the names, and whether what goes took the end with it: then the text
/// ends in a separator.
struct normal_names
{
    std::vector<std::wstring_view> names;
    bool lost_its_end = false;
};

normal_names normalise(std::vector<std::wstring_view> const &names, bool has_root)
{
    normal_names normal;
    for (std::wstring_view const name : names) {
        bool const can_go_back = !normal.names.empty() && normal.names.back() != dot_dot;
        normal.lost_its_end = name == dot || (name == dot_dot && can_go_back);
        if (name == dot_dot && can_go_back)
            normal.names.pop_back();
        else if (name != dot && !(name == dot_dot && has_root))
            normal.names.push_back(name);
    }
    return normal;
}

bool is_drive(std::wstring_view name)
{
    return name.size() == 2 && is_drive_at(name, 0);
}

/// Such names, joined behind something else, would lead to another place.
bool has_name_like_a_root(std::wstring_view text)
{
    std::vector<std::wstring_view> const names = names_of(text);
    return std::any_of(names.begin(), names.end(), is_drive);
}

// \\?\C:\dir; other names of two units would come to the same with or without the prefix
bool has_long_drive_root(std::wstring_view text)
{
    return is_long_prefix_at(text, 0) && is_drive_at(text, long_prefix_size) &&
           is_separator(unit_at(text, long_prefix_size + drive_size));
}

bool have_no_relation(std::wstring_view text, std::wstring_view base)
{
    return text.substr(0, root_name_length(text)) != base.substr(0, root_name_length(base)) ||
           is_absolute(text) != is_absolute(base) ||
           (!has_root_directory(text) && has_root_directory(base)) || has_name_like_a_root(text) ||
           has_name_like_a_root(base);
}

/// How many levels the names go down, less how many they go up.
long depth_of(std::vector<std::wstring_view>::const_iterator begin,
              std::vector<std::wstring_view>::const_iterator end)
{
    long depth = 0;
    for (auto name = begin; name != end; ++name) {
        if (*name == dot_dot)
            --depth;
        else if (!name->empty() && *name != dot)
            ++depth;
    }
    return depth;
}

} // namespace

std::vector<std::wstring_view> elements_of(std::wstring_view text)
{
    std::vector<std::wstring_view> elements;
    if (std::size_t const length = root_name_length(text); length > 0)
        elements.push_back(text.substr(0, length));
    if (has_root_directory(text))
        elements.push_back(root_directory);
    std::vector<std::wstring_view> const names = names_of(text);
    elements.insert(elements.end(), names.begin(), names.end());
    if (!names.empty() && ends_in_separator(text))
        elements.emplace_back();
    return elements;
}

void join(std::wstring &text, std::wstring_view element)
{
    std::size_t const root_name = root_name_length<wchar_t>(text);
    if (element == root_directory)
        text.resize(root_name);
    else if (text.size() > root_name && !is_separator(text.back()))
        text += backslash<wchar_t>;
    text += element;
}

std::wstring lexically_normal(std::wstring_view text)
{
    if (text.empty())
        return {};
    bool const has_root = has_root_directory(text);
    normal_names const normal = normalise(names_of(text), has_root);
    std::wstring result(text.substr(0, root_name_length(text)));
    std::replace_if(result.begin(), result.end(), is_separator<wchar_t>, backslash<wchar_t>);
    if (has_root)
        result += backslash<wchar_t>;
    // names are texts here: one like a drive isn't joined as the root that it looks like
    for (std::size_t i = 0; i < normal.names.size(); ++i) {
        if (i > 0)
            result += backslash<wchar_t>;
        result += normal.names[i];
    }
    bool const has_end = normal.lost_its_end || ends_in_separator(text);
    if (has_end && !normal.names.empty() && normal.names.back() != dot_dot)
        result += backslash<wchar_t>;
    if (result.empty())
        result = dot;
    return result;
}

std::wstring lexically_relative(std::wstring_view text, std::wstring_view base)
{
    if (has_long_drive_root(text) && has_long_drive_root(base)) {
        text.remove_prefix(long_prefix_size);
        base.remove_prefix(long_prefix_size);
    }
    if (have_no_relation(text, base))
        return {};
    std::vector<std::wstring_view> const to = elements_of(text);
    std::vector<std::wstring_view> const from = elements_of(base);
    auto const [here, there] = std::mismatch(to.begin(), to.end(), from.begin(), from.end());
    if (here == to.end() && there == from.end())
        return std::wstring(dot);
    long const levels = depth_of(there, from.end());
    if (levels < 0)
        return {};
    if (levels == 0 && (here == to.end() || here->empty()))
        return std::wstring(dot);
    std::wstring result;
    for (long level = 0; level < levels; ++level)
        join(result, dot_dot);
    for (auto element = here; element != to.end(); ++element)
        join(result, *element);
    return result;
}

} // namespace fl::filesystem::detail::standard
