// What programs do with values of ours: scripts/check-headers compiles it. Clang is the one
// that refuses an explicit constructor where nothing is given.

#include <fl/filesystem.hpp>

#include <array>
#include <type_traits>
#include <utility>

namespace fs = fl::filesystem;

namespace {

template <typename Value>
struct holder
{
    int number;
    Value value;
};

template <typename Value>
Value made_of_nothing()
{
    return {};
}

template <typename Value>
void use_as_plain_value()
{
    std::array<Value, 2> values{};
    holder<Value> held{1, {}};
    holder<Value> cleared = {};
    values[0] = made_of_nothing<Value>();
    held.value = values[1];
    cleared.value = {};
    static_assert(!std::is_convertible_v<unsigned int, Value>, "no number is a value");
    static_assert(!std::is_convertible_v<std::u16string, Value>, "nor is a text");
}

template <typename... Values>
void use_all()
{
    (use_as_plain_value<Values>(), ...);
}

using elements = fs::pathname_element_context<char16_t>;
static_assert(std::is_aggregate_v<elements>);
static_assert(std::is_nothrow_move_constructible_v<elements>);

} // namespace

int main()
{
    use_all<fs::file_status, fs::file_status_light, fs::FileNameTooLarge, fs::AccessDenied,
            fs::PathNotFound, fs::NotDirectoryError, fs::DirectoryNotEmpty, fs::FileIsDirectory,
            fs::FileExistsError, fs::SystemError, fs::InvalidOperation,
            fs::FileNameConversionFailure, fs::CvtInvalidCharacter, fs::PathNameComparisonFailure,
            fs::TempEnvNotSpecified>();
    elements parts{u"C:\\", u"a.b", u"a", u"b"};
    elements other = std::move(parts);
    parts = other;
}
