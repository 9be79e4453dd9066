#include "flfs/inspection_json.hpp"

#include "flfs/failure_json.hpp"
#include "flfs/path_type_name.hpp"
#include "flfs/system.hpp"
#include "flfs/text.hpp"

namespace flfs {

using json = nlohmann::ordered_json;
namespace windows = fl::filesystem::detail::windows;

namespace {

json type_object(windows::path_type_enum type)
{
    return {{"name", path_type_name(type)},
            {"value", static_cast<std::uint32_t>(type)},
            {"hex", path_type_hex(type)}};
}

json analysis_object(root_analysis const &analysed)
{
    if (analysed.exception.empty()) {
        json object = type_object(analysed.type);
        object["exception"] = nullptr;
        return object;
    }
    return {{"name", nullptr},
            {"value", nullptr},
            {"hex", nullptr},
            {"exception", {{"class", analysed.exception}, {"message", analysed.message}}}};
}

json root_lengths_object(kind const &answers)
{
    json object;
    object["analyse_path_root"] =
        answers.analysed.exception.empty() ? json(answers.analysed.length) : json(nullptr);
    object["get_root_path_length"] = answers.root_path_length;
    object["element_root_length"] = answers.element_root_length;
    object["unc_root_length"] =
        answers.unc_root_length ? json(*answers.unc_root_length) : json(nullptr);
    return object;
}

void add_forms(json &object, forms const &all)
{
    object["native_form"] = escaped_surrogates(all.native);
    object["native_length"] = all.native.size();
    object["generic_form"] = escaped_surrogates(all.generic);
    object["expanded_form"] =
        all.expansion_failure ? json(nullptr) : json(escaped_surrogates(all.expanded));
    object["expanded_form_failure"] =
        all.expansion_failure ? to_json(*all.expansion_failure) : json(nullptr);
    object["access_form"] = escaped_surrogates(all.access);
    object["is_absolute"] = all.is_absolute;
    object["is_absolute_path_when_expanded"] = all.is_absolute_when_expanded;
}

void add_parts(json &object, parts const &all)
{
    object["parts"] = {{"root_name", escaped_surrogates(all.root_name)},
                       {"root_directory", escaped_surrogates(all.root_directory)},
                       {"root_path", escaped_surrogates(all.root_path)},
                       {"relative_path", escaped_surrogates(all.relative_path)},
                       {"parent_path", escaped_surrogates(all.parent_path)},
                       {"filename", escaped_surrogates(all.filename)},
                       {"stem", escaped_surrogates(all.stem)},
                       {"extension", escaped_surrogates(all.extension)}};
    object["elements"] = to_json(all.elements);
    auto const &other = all.with_share_in_root;
    object["parts_with_share_in_root"] = {{"parent_path", escaped_surrogates(other.parent_path)},
                                          {"filename", escaped_surrogates(other.filename)},
                                          {"stem", escaped_surrogates(other.stem)},
                                          {"extension", escaped_surrogates(other.extension)}};
}

} // namespace

json to_json(inspection const &one)
{
    json object;
    object["text"] = escaped_surrogates(one.text);
    object["length"] = one.text.size();
    object["system"] = system_is_simulated ? "simulated" : "windows";
    object["classify_path_type"] = type_object(one.kind.classified);
    object["analyse_path_root"] = analysis_object(one.kind.analysed);
    object["root_lengths"] = root_lengths_object(one.kind);
    add_forms(object, one.forms);
    add_parts(object, one.parts);
    return object;
}

} // namespace flfs
