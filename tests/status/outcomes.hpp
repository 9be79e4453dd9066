#ifndef FL_FILESYSTEM_TESTS_STATUS_OUTCOMES_HPP
#define FL_FILESYSTEM_TESTS_STATUS_OUTCOMES_HPP
// What a query of a status came to, as one value to compare: its record, or what it threw.

#include <fl/filesystem/file_status.hpp>

#include "support/names.hpp"

#include <boost/date_time/posix_time/posix_time_duration.hpp>

namespace test_support {

/// Microseconds since 1601, none for a time that is not set.
using instant = std::optional<std::int64_t>;

/// A record of either kind; the short one lacks permissions and two times.
struct record
{
    unsigned int type = 0xFFFF0000;
    std::optional<unsigned int> perms;
    instant access, write, creation;
    std::uint64_t size = 0;

    friend bool operator==(record const &, record const &) = default;
};

struct outcome
{
    std::optional<record> answer;
    std::optional<failure> failed;
    bool met_invalid_character = false;

    friend bool operator==(outcome const &, outcome const &) = default;
};

inline instant instant_of(boost::posix_time::ptime const &time)
{
    if (time.is_special())
        return std::nullopt;
    boost::posix_time::ptime const start(boost::gregorian::date(1601, 1, 1));
    return (time - start).total_microseconds();
}

inline record record_of(fl::filesystem::file_status const &status)
{
    return {status.get_type(),
            status.get_perms(),
            instant_of(status.get_atime()),
            instant_of(status.get_mtime()),
            instant_of(status.get_ctime()),
            status.get_size()};
}

inline record record_of(fl::filesystem::file_status_light const &status)
{
    return {status.get_type(), {}, {}, instant_of(status.get_mtime()), {}, status.get_size()};
}

/// The short record of the same name.
inline record shortened(record const &full)
{
    return {full.type, {}, {}, full.write, {}, full.size};
}

/// A full record of nothing but a type: no permissions, no times.
inline record bare(unsigned int type)
{
    return {type, 0, {}, {}, {}, 0};
}

inline outcome answers(record const &answer)
{
    return {answer, {}, false};
}

inline outcome fails(failure const &failed)
{
    return {{}, failed, false};
}

inline outcome missing()
{
    return answers(bare(0xFFFF0000));
}

inline outcome missing_light()
{
    return answers(shortened(bare(0xFFFF0000)));
}

inline outcome invalid_character()
{
    return {{}, {}, true};
}

template <typename Query>
outcome outcome_of(Query query)
{
    outcome seen;
    try {
        seen.failed = failure_of([&] { seen.answer = record_of(query()); });
    } catch (foundation::ustring::CtypeInvalidCharacter const &) {
        seen.met_invalid_character = true;
    }
    return seen;
}

inline std::ostream &operator<<(std::ostream &out, record const &shown)
{
    auto const time = [&out](char const *name, instant const &when) {
        out << name;
        when ? out << *when : out << "none";
    };
    out << "type " << std::hex << shown.type << std::dec << ", perms ";
    shown.perms ? out << std::oct << *shown.perms << std::dec : out << "none";
    time(", access ", shown.access);
    time(", write ", shown.write);
    time(", creation ", shown.creation);
    return out << ", size " << shown.size;
}

inline std::ostream &operator<<(std::ostream &out, outcome const &shown)
{
    if (shown.met_invalid_character)
        return out << "an invalid character";
    return shown.answer ? out << *shown.answer : out << shown.failed;
}

} // namespace test_support

#endif
