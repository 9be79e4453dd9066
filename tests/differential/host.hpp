#ifndef FL_FILESYSTEM_TESTS_DIFFERENTIAL_HOST_HPP
#define FL_FILESYSTEM_TESTS_DIFFERENTIAL_HOST_HPP
// The disk that a sequence runs on: natively a simulated machine of its own, for a
// Windows target drive C: of the real system, which is put in order afterwards.

#include <memory>
#include <string>
#include <vector>

namespace differential {

/// One file or directory that a sequence left behind.
struct entry
{
    std::wstring pathname;
    bool is_directory = false;
    unsigned int attributes = 0;
    std::string content;
};

/// A folder `C:\fl-differential\<8 digits>` with a few things in it, as the
/// process's current directory. Sequences may well leave it: the whole drive is
/// looked at, without what is there from the start.
class host
{
public:
    explicit host(unsigned int number);
    ~host();
    host(host const &) = delete;
    host &operator=(host const &) = delete;

    /// All on the drive that was made since, with what the host itself put there.
    /// Each directory stands ahead of its entries, and these in the order of their units.
    std::vector<entry> entries() const;

    /// Where the process stands, if that can be learnt without a call; else empty.
    std::u16string current_directory() const;
    /// What is on the drive, if that can be learnt without a call; else empty.
    std::vector<entry> standing() const;

private:
    struct state;
    std::unique_ptr<state> state_;
};

/// Whether a name was on the drive before the first sequence.
bool is_of_the_system(std::wstring const &name);

/// The last element of the folder.
std::wstring folder_name(unsigned int number);
inline constexpr wchar_t const *folder_above = L"C:\\fl-differential\\";

} // namespace differential

#endif
