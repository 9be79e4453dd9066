#include "flfs/permission_words.hpp"

#include "flfs/status_text.hpp"

namespace flfs {

using fl::filesystem::file_status;

namespace {

/// 0 for what is no letter. Owner, group and others are one here: Windows has no three
/// sets of permissions.
unsigned int bits_of(char letter)
{
    switch (letter) {
    case 'r':
        return file_status::owner_read | file_status::group_read | file_status::others_read;
    case 'w':
        return file_status::owner_write | file_status::group_write | file_status::others_write;
    case 'x':
        return file_status::owner_exec | file_status::group_exec | file_status::others_exec;
    default:
        break;
    }
    for (attribute_flag const &flag : attribute_flags())
        if (flag.letter == letter)
            return flag.bit;
    return 0;
}

std::optional<unsigned int> modifier_of(char sign)
{
    switch (sign) {
    case '+':
        return file_status::perms_add;
    case '-':
        return file_status::perms_remove;
    case '=':
        return 0;
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<unsigned int> permission_word(std::string_view text)
{
    if (text.empty())
        return std::nullopt;
    std::optional<unsigned int> const modifier = modifier_of(text.front());
    if (!modifier || (*modifier != 0 && text.size() == 1))
        return std::nullopt;
    unsigned int word = *modifier;
    for (char const letter : text.substr(1)) {
        unsigned int const bits = bits_of(letter);
        if (bits == 0)
            return std::nullopt;
        word |= bits;
    }
    return word;
}

} // namespace flfs
