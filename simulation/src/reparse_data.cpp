#include "reparse_data.hpp"

#include "failure.hpp"
#include "full_path.hpp"

namespace fl::simulation {

namespace {

constexpr DWORD relative_flag = 1; // SYMLINK_FLAG_RELATIVE

/// Names begin behind four offsets and lengths, and a symbolic link's flags.
constexpr std::size_t names_of_link = 12;
constexpr std::size_t names_of_mount_point = 8;

void append_text(std::string &bytes, std::u16string_view text)
{
    for (char16_t const unit : text)
        append_number(bytes, unit, 2);
}

std::u16string text_at(std::string_view bytes, std::size_t offset, std::size_t length)
{
    if (offset + length > bytes.size())
        throw failure(ERROR_INVALID_REPARSE_DATA);
    std::u16string text;
    for (std::size_t index = 0; index + 1 < length; index += 2)
        text += static_cast<char16_t>(number_at(bytes, offset + index, 2));
    return text;
}

/// `\??\C:\dir` or `\??\UNC\server\share`, as the object manager takes it.
std::u16string object_name_of(std::u16string_view text, machine_state &machine)
{
    if (is_literal(text))
        return u"\\??\\" + std::u16string(text.substr(4));
    std::u16string const full = full_path(text, machine);
    bool const is_network = form_of(full) == path_form::unc;
    return is_network ? u"\\??\\UNC" + full.substr(1) : u"\\??\\" + full;
}

} // namespace

void append_number(std::string &bytes, std::size_t number, std::size_t size)
{
    for (std::size_t index = 0; index < size; ++index)
        bytes += static_cast<char>((number >> (8 * index)) & 0xFF);
}

DWORD number_at(std::string_view bytes, std::size_t offset, std::size_t size)
{
    DWORD number = 0;
    for (std::size_t index = 0; index < size && offset + index < bytes.size(); ++index) {
        DWORD const byte = static_cast<unsigned char>(bytes[offset + index]);
        number |= byte << (8 * index);
    }
    return number;
}

bool is_of_microsoft(DWORD tag)
{
    return (tag & 0x80000000) != 0;
}

bool is_reserved(DWORD tag)
{
    return tag <= 1;
}

void check_storable(reparse_point const &point)
{
    std::size_t const least = is_of_microsoft(point.tag) ? 0 : maker_size;
    constexpr std::size_t most = MAXIMUM_REPARSE_DATA_BUFFER_SIZE - reparse_header_size;
    if (is_reserved(point.tag) || point.data.size() < least || point.data.size() > most)
        throw failure(ERROR_INVALID_REPARSE_DATA);
}

redirection decode(reparse_point const &point)
{
    bool const is_link = point.tag == IO_REPARSE_TAG_SYMLINK;
    std::size_t const names = is_link ? names_of_link : names_of_mount_point;
    if (point.data.size() < names)
        throw failure(ERROR_INVALID_REPARSE_DATA);
    std::size_t const offset = number_at(point.data, 0, 2);
    std::size_t const length = number_at(point.data, 2, 2);
    bool const is_relative = is_link && number_at(point.data, 8, 4) == relative_flag;
    return {text_at(point.data, names + offset, length), is_relative};
}

std::string symbolic_link_data(std::u16string_view substitute, std::u16string_view print,
                               DWORD flags)
{
    std::string bytes;
    // the order in which the system itself writes them
    append_number(bytes, 2 * print.size(), 2);
    append_number(bytes, 2 * substitute.size(), 2);
    append_number(bytes, 0, 2);
    append_number(bytes, 2 * print.size(), 2);
    append_number(bytes, flags, 4);
    append_text(bytes, print);
    append_text(bytes, substitute);
    return bytes;
}

std::string mount_point_data(std::u16string_view substitute, std::u16string_view print)
{
    std::string bytes;
    append_number(bytes, 0, 2);
    append_number(bytes, 2 * substitute.size(), 2);
    append_number(bytes, 2 * substitute.size() + 2, 2); // both names have a NUL behind them
    append_number(bytes, 2 * print.size(), 2);
    append_text(bytes, substitute);
    append_number(bytes, 0, 2);
    append_text(bytes, print);
    append_number(bytes, 0, 2);
    return bytes;
}

reparse_point make_symbolic_link(std::u16string_view text, machine_state &machine)
{
    if (text.empty())
        throw failure(ERROR_INVALID_REPARSE_DATA);
    path_form const form = form_of(text);
    bool const is_relative =
        !is_literal(text) && (form == path_form::rooted || form == path_form::relative);
    std::u16string const substitute =
        is_relative ? std::u16string(text) : object_name_of(text, machine);
    reparse_point made{DWORD{IO_REPARSE_TAG_SYMLINK},
                       symbolic_link_data(substitute, text, is_relative ? relative_flag : 0)};
    check_storable(made);
    return made;
}

} // namespace fl::simulation
