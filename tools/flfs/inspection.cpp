#include "flfs/inspection.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/pathname.hpp>
#include <fl/filesystem/windows.hpp>

#include "flfs/drawing.hpp"
#include "flfs/library_inside.hpp"
#include "flfs/system.hpp"
#include "flfs/text.hpp"

#include <algorithm>

namespace flfs {

namespace fs = fl::filesystem;
namespace detail = fl::filesystem::detail;
namespace windows = fl::filesystem::detail::windows;

namespace {

/// A part of a pathname. Its key for programs is the label with `_` for blanks.
struct part
{
    char const *label;
    std::u16string value;
};

using parts = std::vector<part>;

struct type_name
{
    windows::path_type_enum type;
    char const *name;
};

constexpr type_name type_names[] = {
    {windows::PATH_TYPE_INVALID, "PATH_TYPE_INVALID"},
    {windows::PATH_TYPE_RELATIVE, "PATH_TYPE_RELATIVE"},
    {windows::PATH_TYPE_ROOTED, "PATH_TYPE_ROOTED"},
    {windows::PATH_TYPE_DRIVE_ABSOLUTE, "PATH_TYPE_DRIVE_ABSOLUTE"},
    {windows::PATH_TYPE_DRIVE_RELATIVE, "PATH_TYPE_DRIVE_RELATIVE"},
    {windows::PATH_TYPE_UNC, "PATH_TYPE_UNC"},
    {windows::PATH_TYPE_UNC_NO_ROOT, "PATH_TYPE_UNC_NO_ROOT"},
    {windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE, "PATH_TYPE_LONG_DRIVE_ABSOLUTE"},
    {windows::PATH_TYPE_LONG_DRIVE_RELATIVE, "PATH_TYPE_LONG_DRIVE_RELATIVE"},
    {windows::PATH_TYPE_LONG_UNC, "PATH_TYPE_LONG_UNC"},
    {windows::PATH_TYPE_LONG_UNC_NO_ROOT, "PATH_TYPE_LONG_UNC_NO_ROOT"},
    {windows::PATH_TYPE_DEVICE, "PATH_TYPE_DEVICE"},
};

char const *name_of(windows::path_type_enum type)
{
    for (type_name const &row : type_names)
        if (row.type == type)
            return row.name;
    return "(no path type)";
}

windows::path_type_enum type_of(std::u16string_view text)
{
    return detail::classify_path_type(text);
}

/// The answer of `detail::analyse_path_root`: a root, or an exception.
struct root_analysis
{
    detail::analysed_root root{};
    char const *exception = nullptr; ///< its class
    std::string message;
};

root_analysis analyse(std::u16string_view text)
{
    try {
        return {detail::analyse_path_root(text), nullptr, ""};
    } catch (foundation::ustring::CtypeInvalidCharacter const &exception) {
        return {{}, "foundation::ustring::CtypeInvalidCharacter", exception.what()};
    }
}

struct root_length
{
    char const *function;
    std::optional<std::uint64_t> length;
};

std::optional<std::uint64_t> unc_root_length_of(std::u16string_view text)
{
    // \\server\share
    if (detail::is_unc_prefix_at(text, 0))
        return detail::unc_root_length(text, 2);
    // \\?\UNC\server\share
    if (detail::is_long_unc_prefix_at(text, 0))
        return detail::unc_root_length(text, 8);
    return std::nullopt;
}

std::vector<root_length> root_lengths_of(std::u16string const &text)
{
    root_analysis const analysed = analyse(text);
    return {{"analyse_path_root", analysed.exception != nullptr
                                      ? std::nullopt
                                      : std::optional<std::uint64_t>(analysed.root.length)},
            {"get_root_path_length", detail::get_root_path_length(text)},
            {"element_root_length", detail::element_root_length<char16_t>(text)},
            {"unc_root_length", unc_root_length_of(text)}};
}

/// All but `native` made of the native form.
struct forms
{
    std::u16string native;
    std::u16string generic;
    std::optional<std::u16string> expanded;
    std::optional<failure> expansion_failure; ///< then there is no `expanded`
    std::u16string access;
    bool is_absolute;
    bool is_absolute_when_expanded;
};

forms forms_of(std::u16string const &text)
{
    forms all{};
    all.native = detail::make_native_form(text, true);
    all.generic = detail::make_generic_form(all.native);
    all.expansion_failure =
        failure_of([&all] { all.expanded = detail::make_expanded_path(all.native, true); });
    all.access =
        detail::from_filesystem(detail::make_access_form(detail::to_filesystem(all.native)));
    all.is_absolute = detail::is_absolute(all.native);
    all.is_absolute_when_expanded = detail::is_absolute_path_when_expanded(all.native, true);
    return all;
}

parts parts_of(std::u16string const &native)
{
    return {{"root name", detail::extract_root_name(native)},
            {"root directory", detail::extract_root_directory(native)},
            {"root path", detail::extract_root_path(native)},
            {"relative path", detail::extract_relative_path(native)},
            {"parent path", detail::extract_parent_path(native)},
            {"filename", detail::extract_filename(native)},
            {"stem", detail::extract_stem(native)},
            {"extension", detail::extract_extension(native)}};
}

parts parts_with_share_in_root(std::u16string const &native)
{
    auto const all = detail::extract_pathname_elements(native);
    return {{"parent path", all.parent_path},
            {"filename", all.filename},
            {"stem", all.stem},
            {"extension", all.extension}};
}

/// In walking order.
std::vector<std::u16string> elements_of(std::u16string const &text)
{
    fs::upath const path(text);
    return {path.begin(), path.end()};
}

// For programs

json type_object(windows::path_type_enum type)
{
    auto const value = static_cast<std::uint32_t>(type);
    return {{"name", name_of(type)}, {"value", value}, {"hex", hexadecimal(value, 4)}};
}

json analysis_object(root_analysis const &analysed)
{
    json object = {{"name", nullptr}, {"value", nullptr}, {"hex", nullptr}, {"exception", nullptr}};
    if (analysed.exception == nullptr)
        object.update(type_object(analysed.root.type));
    else
        object["exception"] = {{"class", analysed.exception}, {"message", analysed.message}};
    return object;
}

json root_lengths_object(std::u16string const &text)
{
    json object;
    for (root_length const &one : root_lengths_of(text))
        object[one.function] = one.length ? json(*one.length) : json();
    return object;
}

json parts_object(parts const &all)
{
    json object;
    for (part const &one : all) {
        std::string key = one.label;
        std::replace(key.begin(), key.end(), ' ', '_');
        object[key] = to_json(one.value);
    }
    return object;
}

// For people

constexpr std::size_t label_width = 26;

std::string heading(std::string const &title)
{
    return "\n  " + title + '\n';
}

std::string name_and_value(windows::path_type_enum type)
{
    return name_of(type) + (" (" + hexadecimal(static_cast<std::uint32_t>(type), 4)) + ')';
}

std::string types_text(std::u16string const &text)
{
    root_analysis const analysed = analyse(text);
    facts lines(label_width);
    lines.add("classify_path_type", name_and_value(type_of(text)))
        .add("analyse_path_root", analysed.exception == nullptr
                                      ? name_and_value(analysed.root.type)
                                      : "(throws " + std::string(analysed.exception) + ')');
    return heading("Type of the text as given") + lines.text();
}

std::string root_lengths_text(std::u16string const &text)
{
    facts lines(label_width);
    for (root_length const &one : root_lengths_of(text))
        lines.add(one.function, one.length ? std::to_string(*one.length) : "-");
    return heading("Length of its root, in UTF-16 units") + lines.text();
}

std::string shown_expansion(forms const &all)
{
    if (all.expanded)
        return displayed_value(*all.expanded);
    return "(fails: " + all.expansion_failure->identifier + ", code " +
           std::to_string(all.expansion_failure->code) + ')';
}

std::string forms_text(forms const &all)
{
    facts lines(label_width);
    lines.add("native", all.native)
        .add("generic", all.generic)
        .add("expanded", shown_expansion(all))
        .add("access", all.access)
        .add("absolute", all.is_absolute ? "yes" : "no")
        .add("absolute when expanded", all.is_absolute_when_expanded ? "yes" : "no");
    return heading("Forms") + lines.text();
}

facts lines_of(parts const &all)
{
    facts lines(label_width);
    for (part const &one : all)
        lines.add(one.label, one.value);
    return lines;
}

/// The elements between bars, which no Windows name may hold.
std::string joined(std::vector<std::u16string> const &elements)
{
    std::string line;
    for (std::u16string const &element : elements)
        line += (line.empty() ? "" : " | ") + displayed_value(element);
    return line.empty() ? "(none)" : line;
}

std::string parts_text(std::u16string const &text, std::u16string const &native)
{
    parts const all = parts_of(native);
    parts const others = parts_with_share_in_root(native);
    std::string const lines = heading("Parts of the native form") +
                              lines_of(all).add("elements", joined(elements_of(text))).text();
    auto const is_same = [](part const &one, part const &other) {
        return one.value == other.value;
    };
    if (std::equal(others.rbegin(), others.rend(), all.rbegin(), is_same)) // both end in these four
        return lines;
    return lines + heading("The same by extract_pathname_elements, with share in the root") +
           lines_of(others).text();
}

std::string drawing_of(std::u16string const &native)
{
    std::string text;
    for (std::string const &line : draw(native))
        text += "    " + line + '\n';
    return text;
}

} // namespace

json inspect_for_programs(std::u16string const &text)
{
    forms const all = forms_of(text);
    return {
        {"text", to_json(text)},
        {"length", text.size()},
        {"system", system_is_simulated ? "simulated" : "windows"},
        {"classify_path_type", type_object(type_of(text))},
        {"analyse_path_root", analysis_object(analyse(text))},
        {"root_lengths", root_lengths_object(text)},
        {"native_form", to_json(all.native)},
        {"native_length", all.native.size()},
        {"generic_form", to_json(all.generic)},
        {"expanded_form", to_json(all.expanded)},
        {"expanded_form_failure", all.expansion_failure ? to_json(*all.expansion_failure) : json()},
        {"access_form", to_json(all.access)},
        {"is_absolute", all.is_absolute},
        {"is_absolute_path_when_expanded", all.is_absolute_when_expanded},
        {"parts", parts_object(parts_of(all.native))},
        {"elements", to_json(elements_of(text))},
        {"parts_with_share_in_root", parts_object(parts_with_share_in_root(all.native))}};
}

std::string inspect(std::u16string const &text)
{
    forms const all = forms_of(text);
    std::string const drawing = drawing_of(all.native);
    return displayed_value(text) + "  (" + std::to_string(text.size()) +
           (text.size() == 1 ? " unit)\n" : " units)\n") + types_text(text) +
           root_lengths_text(text) + forms_text(all) + parts_text(text, all.native) +
           (drawing.empty() ? "" : heading("Drawing") + drawing);
}

std::string inspect_briefly(std::u16string const &text)
{
    std::u16string const native = detail::make_native_form(text, true);
    std::string const as_given =
        type_of(text) == type_of(native) ? "" : std::string("; as given ") + name_of(type_of(text));
    return displayed_value(text) + "\n    " + name_of(type_of(native)) + as_given + "\n\n" +
           drawing_of(native);
}

} // namespace flfs
