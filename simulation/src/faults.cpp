#include "faults.hpp"

#include "failure.hpp"
#include "full_path.hpp"
#include "names.hpp"

#include <algorithm>
#include <utility>

namespace simulation {

fault::fault(std::shared_ptr<fault_record> record) noexcept : record_(std::move(record)) {}

fault::fault(fault &&other) noexcept : record_(std::exchange(other.record_, nullptr)) {}

fault &fault::operator=(fault other) noexcept
{
    std::swap(record_, other.record_);
    return *this;
}

fault::~fault()
{
    if (record_)
        record_->is_live = false;
}

bool fault::fired() const noexcept
{
    return record_ && record_->has_fired;
}

fault faults::add(std::shared_ptr<fault_record> record)
{
    forget_dead();
    records_.push_back(record);
    return fault(std::move(record));
}

std::u16string comparable_name(std::u16string_view text, machine_state &machine)
{
    std::u16string name(text);
    try {
        if (!is_literal(text))
            name = full_path(text, machine);
    } catch (failure const &) {
        return name; // no pathname: comparable with its like
    }
    if (is_literal(name))
        name = name.substr(4);
    if (upcase(name).starts_with(u"UNC\\"))
        name = u"\\" + name.substr(3);
    while (name.ends_with(u'\\'))
        name.pop_back();
    return upcase(name);
}

std::optional<DWORD> faults::meet(std::string_view function,
                                  std::vector<std::u16string> const &texts, machine_state &machine)
{
    forget_dead();
    std::vector<std::u16string> names;
    if (knows_names()) {
        for (std::u16string const &text : texts)
            names.push_back(comparable_name(text, machine));
    }
    std::shared_ptr<fault_record> met;
    for (auto const &record : records_) {
        if (record->hook || (!record->function.empty() && record->function != function))
            continue;
        if (!record->name.empty() &&
            std::find(names.begin(), names.end(), record->name) == names.end())
            continue;
        ++record->seen; // each counts for itself, also when another fails the call
        if (!met && (record->nth == 0 || record->nth == record->seen))
            met = record;
    }
    if (!met)
        return std::nullopt;
    met->has_fired = true;
    return met->code;
}

std::optional<DWORD> faults::full_path_name(DWORD room, wchar_t *buffer)
{
    auto const hooked = records_; // a hook may add or remove faults
    for (auto const &record : hooked) {
        if (!record->hook || !record->is_live)
            continue;
        std::optional<DWORD> const answer = record->hook(room, buffer);
        if (!answer)
            continue;
        record->has_fired = true;
        return answer;
    }
    return std::nullopt;
}

bool faults::knows_names() const
{
    return std::any_of(records_.begin(), records_.end(),
                       [](auto const &record) { return !record->name.empty(); });
}

void faults::forget_dead()
{
    std::erase_if(records_, [](auto const &record) { return !record->is_live; });
}

} // namespace simulation
