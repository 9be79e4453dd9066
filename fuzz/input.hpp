#ifndef FL_FILESYSTEM_FUZZ_INPUT_HPP
#define FL_FILESYSTEM_FUZZ_INPUT_HPP
// The bytes of one run, taken apart; and what must hold.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace fuzz {

/// Ends the run as a finding.
inline void must(bool holds, char const *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "doesn't hold: %s\n", what);
    std::abort();
}

class input
{
public:
    input(std::uint8_t const *data, std::size_t size)
        : rest_(reinterpret_cast<char const *>(data), size)
    {
    }

    bool is_empty() const { return rest_.empty(); }

    /// One byte; 0 where there are no more.
    std::uint8_t byte()
    {
        if (rest_.empty())
            return 0;
        std::uint8_t const first = static_cast<std::uint8_t>(rest_.front());
        rest_.remove_prefix(1);
        return first;
    }

    std::uint32_t below(std::uint32_t limit) { return byte() % limit; }

    /// So many bytes, or what there is.
    std::string bytes(std::size_t count)
    {
        std::string taken(rest_.substr(0, count));
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::string all() { return bytes(rest_.size()); }

    /// Units of text: a byte of ASCII is one, any other makes one together with the next.
    std::u16string text(std::size_t most)
    {
        std::u16string made;
        while (!rest_.empty() && made.size() < most) {
            std::uint8_t const first = byte();
            made += first < 128 ? char16_t{first}
                                : static_cast<char16_t>((first & 127U) * 512U + 2U * byte());
        }
        return made;
    }

    /// The same up to a line's end.
    std::u16string line()
    {
        std::size_t const end = rest_.find('\n');
        input of(reinterpret_cast<std::uint8_t const *>(rest_.data()),
                 end == rest_.npos ? rest_.size() : end);
        rest_.remove_prefix(end == rest_.npos ? rest_.size() : end + 1);
        return of.text(4000);
    }

private:
    std::string_view rest_;
};

inline std::wstring wide(std::u16string_view text)
{
    return std::wstring(text.begin(), text.end());
}

} // namespace fuzz

#endif
