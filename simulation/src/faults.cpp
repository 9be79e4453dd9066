#include "faults.hpp"

#include "failure.hpp"

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

void faults::meet(std::string_view function)
{
    forget_dead();
    std::shared_ptr<fault_record> met;
    for (auto const &record : records_) {
        if (record->hook || (!record->function.empty() && record->function != function))
            continue;
        ++record->seen; // each counts for itself, also when another fails the call
        if (!met && (record->nth == 0 || record->nth == record->seen))
            met = record;
    }
    if (!met)
        return;
    met->has_fired = true;
    throw failure(met->code);
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

void faults::forget_dead()
{
    std::erase_if(records_, [](auto const &record) { return !record->is_live; });
}

} // namespace simulation
