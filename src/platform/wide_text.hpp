#ifndef FL_FILESYSTEM_SRC_PLATFORM_WIDE_TEXT_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_WIDE_TEXT_HPP
// A text for one system call.

#include "platform/code_units.hpp"
#include "platform/limits.hpp"

#include <algorithm>
#include <string>
#include <string_view>

namespace fl::filesystem::detail {

/// `text` in the system's units, ending in a NUL. On the stack if it is as short as most.
class wide_text
{
public:
    explicit wide_text(std::u16string_view text)
    {
        if (text.size() > longest_bare_pathname) {
            long_ = widen(text);
            return;
        }
        std::copy(text.begin(), text.end(), short_);
        short_[text.size()] = L'\0';
        c_str_ = short_;
    }
    wide_text(wide_text const &) = delete;
    wide_text &operator=(wide_text const &) = delete;

    wchar_t const *c_str() const { return c_str_ != nullptr ? c_str_ : long_.c_str(); }

private:
    wchar_t const *c_str_ = nullptr;
    wchar_t short_[longest_bare_pathname + 1];
    std::wstring long_;
};

} // namespace fl::filesystem::detail

#endif
