#include "wildcard.hpp"

#include "names.hpp"

#include <vector>

namespace fl::simulation {

namespace {

// What the system makes of `*`, `?` and `.` in a pattern, in units that no name has.
constexpr char16_t star_to_last_stop = u'<'; // any units, up to the last full stop
constexpr char16_t unit_or_stop = u'>';      // a unit, or nothing at a full stop or the end
constexpr char16_t stop_or_end = u'"';       // a full stop, or nothing at the end

std::u16string translated(std::u16string_view pattern)
{
    if (pattern == u"*.*")
        return u"*";
    std::u16string result;
    for (std::size_t index = 0; index < pattern.size(); ++index) {
        char16_t const unit = pattern[index];
        char16_t const next = index + 1 < pattern.size() ? pattern[index + 1] : u'\0';
        if (unit == u'?')
            result += unit_or_stop;
        else if (unit == u'.' && (next == u'?' || next == u'*'))
            result += stop_or_end;
        else if (unit == u'*' && next == u'.' && index + 2 == pattern.size())
            return result + star_to_last_stop;
        else
            result += unit;
    }
    return result;
}

/// A pattern and a name in upper case, compared from some index on.
class comparison
{
public:
    comparison(std::u16string pattern, std::u16string name)
        : pattern_(std::move(pattern)), name_(std::move(name))
    {
        // the directory itself and the one above have no extension
        if (name_ != u"." && name_ != u"..")
            last_stop_ = name_.rfind(u'.');
    }

    /// Which prefixes of the name each prefix of the pattern means: one row after the
    /// other, so that no pattern takes longer than its length times the name's.
    bool run() const
    {
        std::vector<bool> row = {true};
        row.resize(name_.size() + 1);
        for (char16_t const unit : pattern_)
            row = after(unit, row);
        return row.back();
    }

private:
    bool is_end(std::size_t index) const { return index == name_.size(); }
    bool is_stop(std::size_t index) const { return !is_end(index) && name_[index] == u'.'; }

    /// Whether `unit` may mean nothing before the index.
    bool takes_none(char16_t unit, std::size_t index) const
    {
        switch (unit) {
        case u'*':
        case star_to_last_stop:
            return true;
        case unit_or_stop:
            return is_end(index) || is_stop(index);
        case stop_or_end:
            return is_end(index);
        default:
            return false;
        }
    }

    /// Whether `unit` may mean the unit at the index.
    bool takes(char16_t unit, std::size_t index) const
    {
        switch (unit) {
        case u'*':
            return true;
        case star_to_last_stop:
            return index != last_stop_;
        case unit_or_stop:
            return !is_stop(index);
        case stop_or_end:
            return is_stop(index);
        default:
            return name_[index] == unit;
        }
    }

    std::vector<bool> after(char16_t unit, std::vector<bool> const &before) const
    {
        bool const repeats = unit == u'*' || unit == star_to_last_stop;
        std::vector<bool> row(before.size());
        for (std::size_t index = 0; index < row.size(); ++index) {
            bool const from_none = before[index] && takes_none(unit, index);
            bool const reached = index > 0 && (before[index - 1] || (repeats && row[index - 1]));
            row[index] = from_none || (reached && takes(unit, index - 1));
        }
        return row;
    }

    std::u16string pattern_;
    std::u16string name_;
    std::size_t last_stop_ = std::u16string::npos;
};

} // namespace

bool has_wildcard(std::u16string_view text)
{
    return text.find_first_of(u"*?<>\"") != std::u16string_view::npos;
}

bool matches(std::u16string_view pattern, std::u16string_view name)
{
    std::u16string const system_pattern = translated(pattern);
    return system_pattern == u"*" || comparison(upcase(system_pattern), upcase(name)).run();
}

} // namespace fl::simulation
