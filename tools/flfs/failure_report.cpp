#include "flfs/failure_report.hpp"

#include <fl/filesystem/attempt.hpp>

#include "flfs/colour.hpp"
#include "flfs/text.hpp"
#include "flfs/wildcards.hpp"

#include <ostream>
#include <string_view>

namespace flfs {

namespace fs = fl::filesystem;

namespace {

constexpr std::string_view after_identifier = ": ";
constexpr std::string_view before_pathname = ": {";

/// The message of an `InvalidArgument`, which only its `what()` tells: between the identifier
/// and the pathname.
std::string message_of(std::string_view what)
{
    std::size_t const end_of_identifier = what.find(after_identifier);
    if (end_of_identifier == what.npos)
        return "The system takes no such pathname.";
    what.remove_prefix(end_of_identifier + after_identifier.size());
    std::string sentence(what.substr(0, what.find(before_pathname)));
    return sentence.empty() || sentence.back() == '.' ? sentence : sentence + '.';
}

std::string sentence_of(fs::FsysExceptionBase const &exception)
{
    switch (exception.get_excp_id()) {
    case fs::fsys_excp_invalid_argument:
        return message_of(exception.what());
    case fs::fsys_excp_invalid_operation:
        return "The object can't do that in its present state.";
    case fs::fsys_excp_file_name_too_large:
        return "The pathname, or a name in it, is longer than Windows takes. Shorten it.";
    case fs::fsys_excp_file_name_conversion_failure:
    case fs::fsys_excp_cvt_invalid_character:
        return "The pathname holds a character that can't be converted. Rename the file.";
    case fs::fsys_excp_access_denied:
        return "You have no right to do this. Check the permissions, or ask who owns it.";
    case fs::fsys_excp_path_not_found:
        return "The name, or a directory on the way to it, doesn't exist. Check the spelling.";
    case fs::fsys_excp_not_directory_error:
        return "A directory is needed here, and this is something else. Check the pathname.";
    case fs::fsys_excp_directory_not_empty:
        return "The directory isn't empty. Remove what is in it first.";
    case fs::fsys_excp_file_is_directory:
        return "A file is needed here, and this is a directory. Check the pathname.";
    case fs::fsys_excp_file_exists_error:
        return "Something of that name is there already. Choose another name, or remove it first.";
    case fs::fsys_excp_path_name_comparison_failure:
        return "The pathnames can't be compared. Check that both exist.";
    case fs::fsys_excp_temp_env_not_specified:
        return "No temporary folder is known. Set the environment variable TEMP.";
    case fs::fsys_excp_system_error:
        break;
    }
    if (exception.get_error_code() == 0)
        return "The system refused, and didn't say why.";
    std::string const code = std::to_string(exception.get_error_code());
    return "The system refused. `net helpmsg " + code + "` tells what it means by that code.";
}

} // namespace

failure describe(fs::FsysExceptionBase const &exception)
{
    std::string_view const what = exception.what(); // of an `InvalidArgument` with more behind it
    return {std::string(what.substr(0, what.find(after_identifier))),
            exception.get_excp_id(),
            exception.get_path_name(),
            exception.get_additional_path_names(),
            exception.get_error_code(),
            sentence_of(exception)};
}

failure describe(fs::failure const &kept)
{
    return describe(fs::FsysExceptionBase(kept.identifier().c_str(), kept.id(), kept.path_name(),
                                          kept.additional_path_names(), kept.error_code()));
}

std::optional<failure> failure_of(std::function<void()> const &action)
{
    try {
        action();
    } catch (fs::FsysExceptionBase const &exception) {
        return describe(exception);
    } catch (foundation::ustring::CtypeInvalidCharacter const &) {
        return failure{"foundation::ustring::CtypeInvalidCharacter",
                       {},
                       {},
                       {},
                       0,
                       "An extension of three characters must be ASCII here. Rename the file."};
    }
    return std::nullopt;
}

void advise(failure &what_failed, fs::fsys_excp_id id, char const *sentence)
{
    if (what_failed.id == id)
        what_failed.sentence = sentence;
}

void advise_on_links(failure &what_failed)
{
    constexpr unsigned int privilege_not_held = 1314; // ERROR_PRIVILEGE_NOT_HELD
    if (what_failed.code == privilege_not_held)
        what_failed.sentence = "You have no right to make symbolic links. Turn on Windows' "
                               "developer mode, or be an administrator.";
}

void advise_on_quotes(failure &what_failed, std::vector<std::u16string> const &written)
{
    for (std::u16string const &word : written)
        if (word.find(u'"') != word.npos)
            what_failed.sentence = "A quote became part of the name. Leave out the backslash ahead "
                                   "of the closing quote, or write two.";
}

void advise_on_wildcards(failure &what_failed, std::vector<std::u16string> const &written)
{
    for (std::u16string const &word : written)
        if (has_wildcard(word))
            what_failed.sentence = written.size() == 1
                                       ? "Nothing has a name like that, and no name holds a * or ?."
                                       : "Wildcards stand for no names here. Write each pathname.";
}

void print_failure(std::ostream &err, failure const &what_failed,
                   std::vector<std::u16string> const &written, bool in_colours)
{
    err << painted("flfs: " + what_failed.identifier, colour::red, in_colours) << '\n';
    char const *label = "  argument: ";
    if (!what_failed.pathname.empty()) {
        err << "  pathname: " << displayed_value(what_failed.pathname) << '\n';
    } else {
        for (std::u16string const &argument : written) {
            err << label << displayed_value(argument) << '\n';
            label = "  and:      ";
        }
    }
    for (std::u16string const &pathname : what_failed.additional_pathnames)
        if (!pathname.empty())
            err << "  and:      " << displayed_value(pathname) << '\n';
    err << "  code:     " << what_failed.code << '\n';
    err << "  " << what_failed.sentence << '\n';
}

} // namespace flfs
