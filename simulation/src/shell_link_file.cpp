#include "shell_link_file.hpp"

#include "failure.hpp"

#include <objbase.h>

#include <algorithm>
#include <cstdint>

namespace fl::simulation {

namespace {

constexpr std::size_t header_size = 0x4C;

/// Size of the header and identifier of the class.
constexpr std::string_view signature{"\x4C\0\0\0\x01\x14\x02\0\0\0\0\0\xC0\0\0\0\0\0\0\x46", 20};

// what follows the header
constexpr std::uint32_t has_item_list = 0x01;
constexpr std::uint32_t has_link_info = 0x02;
constexpr std::uint32_t has_unicode_texts = 0x80;
constexpr std::uint32_t first_text = 0x04; // name, relative path, directory, arguments, icon
constexpr std::uint32_t last_text = 0x40;

// offsets in the header
constexpr std::size_t flags_at = 0x14;
constexpr std::size_t show_command_at = 0x3C;

// offsets in the link info, and what they are good for
constexpr std::size_t info_header_size_at = 0x04;
constexpr std::size_t info_flags_at = 0x08;
constexpr std::size_t base_path_at = 0x10;
constexpr std::size_t suffix_at = 0x18;
constexpr std::size_t unicode_base_path_at = 0x1C;
constexpr std::size_t unicode_suffix_at = 0x20;
constexpr std::size_t unicode_info_header_size = 0x24;
constexpr std::uint32_t has_base_path = 0x01;

constexpr std::uint32_t fixed_drive = 3;
constexpr std::uint32_t show_normal = 1;

class writer
{
public:
    std::size_t size() const noexcept { return bytes_.size(); }
    void number(std::uint32_t value, int size = 4)
    {
        for (int i = 0; i < size; ++i)
            bytes_ += static_cast<char>(value >> (8 * i) & 0xFFU);
    }
    void replace(std::size_t offset, std::size_t value)
    {
        for (std::size_t i = 0; i < 4; ++i)
            bytes_[offset + i] = static_cast<char>(value >> (8 * i) & 0xFFU);
    }
    void zeros_up_to(std::size_t size) { bytes_.resize(size); }
    void append(std::string_view more) { bytes_ += more; }
    std::string const &bytes() const noexcept { return bytes_; }

private:
    std::string bytes_;
};

/// Looks into strangers' bytes: whatever isn't there means that they are no shortcut.
class reader
{
public:
    explicit reader(std::string_view bytes) noexcept : bytes_(bytes) {}

    std::uint32_t number(std::size_t offset, std::size_t size = 4) const
    {
        std::string_view const part = slice(offset, size);
        std::uint32_t value = 0;
        for (std::size_t i = size; i > 0; --i)
            value = value << 8 | static_cast<unsigned char>(part[i - 1]);
        return value;
    }

    std::string_view slice(std::size_t offset, std::size_t size) const
    {
        if (offset > bytes_.size() || size > bytes_.size() - offset)
            throw failure(static_cast<DWORD>(E_FAIL));
        return bytes_.substr(offset, size);
    }

    /// A text up to its NUL, in units of this many bytes. Narrow text is in the code
    /// page of Western Europe, as far as that is Latin-1.
    std::u16string text(std::size_t offset, std::size_t unit_size) const
    {
        std::u16string text;
        while (std::uint32_t const unit = number(offset, unit_size)) {
            text += static_cast<char16_t>(unit);
            offset += unit_size;
        }
        return text;
    }

private:
    std::string_view bytes_;
};

void append_narrow(writer &out, std::u16string_view text)
{
    for (char16_t const unit : text)
        out.number(unit < 0x100 ? unit : u'?', 1);
    out.number(0, 1);
}

void append_wide(writer &out, std::u16string_view text)
{
    for (char16_t const unit : text)
        out.number(unit, 2);
    out.number(0, 2);
}

std::string header_with(std::uint32_t flags)
{
    writer out;
    out.append(signature);
    out.zeros_up_to(header_size);
    out.replace(flags_at, flags);
    out.replace(show_command_at, show_normal);
    return out.bytes();
}

/// The volume, which nobody asks about here: on a fixed disk, without a name.
void append_volume(writer &out)
{
    constexpr std::uint32_t size = 0x11;
    constexpr std::uint32_t label_at = 0x10;
    for (std::uint32_t const value : {size, fixed_drive, 0U, label_at})
        out.number(value);
    out.number(0, 1);
}

std::string link_info_of(std::u16string_view target)
{
    writer out;
    out.zeros_up_to(unicode_info_header_size);
    out.replace(info_header_size_at, unicode_info_header_size);
    out.replace(info_flags_at, has_base_path);
    out.replace(0x0C, out.size());
    append_volume(out);
    out.replace(base_path_at, out.size());
    append_narrow(out, target);
    out.replace(suffix_at, out.size());
    append_narrow(out, u"");
    out.replace(unicode_base_path_at, out.size());
    append_wide(out, target);
    out.replace(unicode_suffix_at, out.size());
    append_wide(out, u"");
    out.replace(0, out.size());
    return out.bytes();
}

std::u16string target_in(std::string_view info)
{
    reader const in(info);
    std::uint32_t const size = in.number(info_header_size_at);
    if ((in.number(info_flags_at) & has_base_path) == 0)
        throw failure(static_cast<DWORD>(E_FAIL));
    if (size >= unicode_info_header_size) // it has every unit of the name
        return in.text(in.number(unicode_base_path_at), 2) +
               in.text(in.number(unicode_suffix_at), 2);
    return in.text(in.number(base_path_at), 1) + in.text(in.number(suffix_at), 1);
}

/// Checks that the texts are there. The machine has no use for them.
void pass_texts(reader const &in, std::uint32_t flags, std::size_t offset)
{
    std::size_t const unit_size = (flags & has_unicode_texts) != 0 ? 2 : 1;
    for (std::uint32_t flag = first_text; flag <= last_text; flag <<= 1) {
        if ((flags & flag) == 0)
            continue;
        std::size_t const size = in.number(offset, 2) * unit_size;
        in.slice(offset + 2, size);
        offset += 2 + size;
    }
}

} // namespace

std::string write_shell_link(std::u16string_view target)
{
    std::uint32_t const info = target.empty() ? 0U : has_link_info;
    std::string content = header_with(has_unicode_texts | info);
    if (!target.empty())
        content += link_info_of(target);
    return content + std::string(4, '\0'); // no more blocks
}

std::u16string read_shell_link(std::string_view content)
{
    reader const in(content);
    if (in.slice(0, header_size).substr(0, signature.size()) != signature)
        throw failure(static_cast<DWORD>(E_FAIL));
    std::uint32_t const flags = in.number(flags_at);
    std::size_t offset = header_size;
    if ((flags & has_item_list) != 0) {
        std::size_t const size = in.number(offset, 2);
        in.slice(offset + 2, size);
        offset += 2 + size;
    }
    std::u16string target;
    if ((flags & has_link_info) != 0) {
        std::size_t const size = in.number(offset);
        target = target_in(in.slice(offset, size));
        offset += size;
    }
    pass_texts(in, flags, offset);
    return target;
}

} // namespace fl::simulation
