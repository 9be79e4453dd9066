#include "flfs/commands.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/attempt.hpp>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/pathname.hpp>
#include <fl/filesystem/windows.hpp>

#include "flfs/command.hpp"
#include "flfs/drawing.hpp"
#include "flfs/library_inside.hpp"
#include "flfs/text.hpp"

#include <algorithm>
#include <ostream>

// Everything that the library makes of one text: first the values for programs, then these
// for people. Fails on no text: where the library throws, the failure is the answer.

namespace flfs {

namespace fs = fl::filesystem;
namespace detail = fl::filesystem::detail;
namespace windows = fl::filesystem::detail::windows;

namespace {

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
    auto const row = std::find_if(std::begin(type_names), std::end(type_names),
                                  [type](type_name const &one) { return one.type == type; });
    return row == std::end(type_names) ? "(no path type)" : row->name;
}

// For programs

json values_of(windows::path_type_enum type)
{
    auto const value = static_cast<std::uint32_t>(type);
    return {{"name", name_of(type)}, {"value", value}, {"hex", hexadecimal(value, 4)}};
}

using root_analysis = fs::outcome<detail::analysed_root>;

json values_of(root_analysis const &analysed)
{
    json values = {{"name", nullptr}, {"value", nullptr}, {"hex", nullptr}, {"exception", nullptr}};
    if (analysed)
        values.update(values_of(analysed->type));
    else
        values["exception"] = {{"class", "foundation::ustring::CtypeInvalidCharacter"},
                               {"message", analysed.error().identifier()}};
    return values;
}

json unc_root_length_of(std::u16string_view text)
{
    // \\server\share
    if (detail::is_unc_prefix_at(text, 0))
        return detail::unc_root_length(text, 2);
    // \\?\UNC\server\share
    if (detail::is_long_unc_prefix_at(text, 0))
        return detail::unc_root_length(text, 8);
    return nullptr;
}

json parts_of(std::u16string const &native)
{
    return {{"root_name", to_json(detail::extract_root_name(native))},
            {"root_directory", to_json(detail::extract_root_directory(native))},
            {"root_path", to_json(detail::extract_root_path(native))},
            {"relative_path", to_json(detail::extract_relative_path(native))},
            {"parent_path", to_json(detail::extract_parent_path(native))},
            {"filename", to_json(detail::extract_filename(native))},
            {"stem", to_json(detail::extract_stem(native))},
            {"extension", to_json(detail::extract_extension(native))}};
}

json parts_with_share_in_root(std::u16string const &native)
{
    auto const all = detail::extract_pathname_elements(native);
    return {{"parent_path", to_json(all.parent_path)},
            {"filename", to_json(all.filename)},
            {"stem", to_json(all.stem)},
            {"extension", to_json(all.extension)}};
}

/// In walking order.
std::vector<std::u16string> elements_of(std::u16string const &text)
{
    fs::upath const path(text);
    return {path.begin(), path.end()};
}

json inspect(std::u16string const &text)
{
    auto const analysed = fs::attempt([&] { return detail::analyse_path_root<char16_t>(text); });
    std::u16string const native = detail::make_native_form(text, true);
    std::optional<std::u16string> expanded;
    std::optional<failure> const expansion_failure =
        failure_of([&] { expanded = detail::make_expanded_path(native, true); });
    std::u16string const access =
        detail::from_filesystem(detail::make_access_form(detail::to_filesystem(native)));
    return {
        {"text", to_json(text)},
        {"length", text.size()},
        {"system", system_is_simulated ? "simulated" : "windows"},
        {"classify_path_type", values_of(detail::classify_path_type<char16_t>(text))},
        {"analyse_path_root", values_of(analysed)},
        {"root_lengths",
         {{"analyse_path_root", analysed ? json(analysed->length) : json()},
          {"get_root_path_length", detail::get_root_path_length(text)},
          {"element_root_length", detail::element_root_length<char16_t>(text)},
          {"unc_root_length", unc_root_length_of(text)}}},
        {"native_form", to_json(native)},
        {"native_length", native.size()},
        {"generic_form", to_json(detail::make_generic_form(native))},
        {"expanded_form", to_json(expanded)},
        {"expanded_form_failure", expansion_failure ? to_json(*expansion_failure) : json()},
        {"access_form", to_json(access)},
        {"is_absolute", detail::is_absolute(native)},
        {"is_absolute_path_when_expanded", detail::is_absolute_path_when_expanded(native, true)},
        {"parts", parts_of(native)},
        {"elements", to_json(elements_of(text))},
        {"parts_with_share_in_root", parts_with_share_in_root(native)}};
}

// For people

std::string section(char const *title, std::string const &lines)
{
    return lines.empty() ? "" : std::string("\n  ") + title + '\n' + lines;
}

std::string shown_type(json const &type)
{
    if (!type.at("name").is_null())
        return type.at("name").get<std::string>() + " (" + type.at("hex").get<std::string>() + ')';
    return "(throws " + type.at("exception").at("class").get<std::string>() + ')';
}

std::string shown_expansion(json const &all)
{
    json const &failed = all.at("expanded_form_failure");
    if (failed.is_null())
        return shown(all.at("expanded_form"));
    return "(fails: " + failed.at("identifier").get<std::string>() + ", code " +
           shown(failed.at("code")) + ')';
}

/// The elements between bars, which no Windows name may hold.
std::string shown_elements(json const &elements)
{
    std::vector<std::string> names;
    for (json const &element : elements)
        names.push_back(shown(element));
    return names.empty() ? "(none)" : joined(names, " | ");
}

std::string drawing_of(std::u16string const &text)
{
    std::string drawing;
    for (std::string const &line : draw(detail::make_native_form(text, true)))
        drawing += "    " + line + '\n';
    return drawing;
}

facts lines_of(json const &values, std::initializer_list<facts::told_value> rows)
{
    return facts(26).add(values, rows);
}

std::initializer_list<facts::told_value> const last_parts = {{"parent path", "parent_path"},
                                                             {"filename", "filename"},
                                                             {"stem", "stem"},
                                                             {"extension", "extension"}};

std::string parts_text(json const &all)
{
    json const &parts = all.at("parts");
    json const &others = all.at("parts_with_share_in_root");
    facts lines = lines_of(parts, {{"root name", "root_name"},
                                   {"root directory", "root_directory"},
                                   {"root path", "root_path"},
                                   {"relative path", "relative_path"}});
    lines.add(parts, last_parts).add("elements", shown_elements(all.at("elements")));
    bool const is_same =
        std::all_of(last_parts.begin(), last_parts.end(), [&](facts::told_value const &part) {
            return parts.at(part.key) == others.at(part.key);
        });
    return section("Parts of the native form", lines.text()) +
           (is_same ? ""
                    : section("The same by extract_pathname_elements, with share in the root",
                              lines_of(others, last_parts).text()));
}

std::string inspect_for_people(std::u16string const &text)
{
    json const all = inspect(text);
    facts types = lines_of(all, {});
    types.add("classify_path_type", shown_type(all.at("classify_path_type")))
        .add("analyse_path_root", shown_type(all.at("analyse_path_root")));
    facts const lengths =
        lines_of(all.at("root_lengths"), {{"analyse_path_root", "analyse_path_root"},
                                          {"get_root_path_length", "get_root_path_length"},
                                          {"element_root_length", "element_root_length"},
                                          {"unc_root_length", "unc_root_length"}});
    facts forms = lines_of(all, {{"native", "native_form"}, {"generic", "generic_form"}});
    forms.add("expanded", shown_expansion(all))
        .add(all, {{"access", "access_form"},
                   {"absolute", "is_absolute"},
                   {"absolute when expanded", "is_absolute_path_when_expanded"}});
    return displayed_value(text) + "  (" + std::to_string(text.size()) +
           (text.size() == 1 ? " unit)\n" : " units)\n") +
           section("Type of the text as given", types.text()) +
           section("Length of its root, in UTF-16 units", lengths.text()) +
           section("Forms", forms.text()) + parts_text(all) + section("Drawing", drawing_of(text));
}

/// The type and the drawing.
std::string inspect_briefly(std::u16string const &text)
{
    auto const as_given = detail::classify_path_type<char16_t>(text);
    auto const type = detail::classify_path_type<char16_t>(detail::make_native_form(text, true));
    return displayed_value(text) + "\n    " + name_of(type) +
           (as_given == type ? "" : std::string("; as given ") + name_of(as_given)) + "\n\n" +
           drawing_of(text);
}

void print_as_json(std::ostream &out, std::vector<std::u16string> const &texts)
{
    json array = json::array();
    for (std::u16string const &text : texts)
        array.push_back(inspect(text));
    print_json(out, array);
}

void print_for_people(std::ostream &out, std::vector<std::u16string> const &texts, bool briefly)
{
    for (std::u16string const &text : texts) {
        if (&text != &texts.front())
            out << (briefly ? "\n" : "\n\n");
        out << (briefly ? inspect_briefly(text) : inspect_for_people(text));
    }
    if constexpr (system_is_simulated)
        out << (briefly ? ""
                        : "\nCurrent directories are those of a simulated machine: drive C:, "
                          "directory C:\\\n");
}

} // namespace

void add_inspect_command(CLI::App &app, session &session)
{
    command inspecting(app, session, "inspect",
                       "Show what the library makes of a pathname: its type, forms and parts",
                       "Put -- ahead of a TEXT that begins with a hyphen.");
    option const texts = inspecting.words("TEXT", "pathname, which need not exist");
    option const as_json =
        inspecting.flag("--json", "Print one JSON array with an object for each TEXT");
    option const briefly =
        inspecting.flag("--brief", "Print the type and the drawing alone, not with --json");
    exclude(briefly, as_json);
    inspecting.anywhere([&session, texts, as_json, briefly] {
        if (as_json.is_given())
            print_as_json(session.out, texts.pathnames());
        else
            print_for_people(session.out, texts.pathnames(), briefly.is_given());
    });
}

} // namespace flfs
