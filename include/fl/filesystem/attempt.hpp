#ifndef FL_FILESYSTEM_ATTEMPT_HPP
#define FL_FILESYSTEM_ATTEMPT_HPP
// Public. Failures as values, for code without exceptions; and the door by which failures of
// a caller's own system calls are told in the library's words.
//
//     auto const size = attempt([&] { return file_size(p); });
//     if (!size)
//         log(size.error().describe());

#include <fl/filesystem/config.hpp>
#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/mixed_arguments.hpp>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/text.hpp>

#include <exception>
#include <filesystem>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace fl::filesystem {

/// What an exception of the library tells, as a value.
class failure
{
public:
    /// Of an exception of the family: all that it tells.
    explicit failure(FsysExceptionBase const &exception)
        : id_(exception.get_excp_id()), identifier_(exception.what()),
          path_name_(exception.get_path_name()),
          additional_path_names_(exception.get_additional_path_names()),
          error_code_(exception.get_error_code())
    {
    }

    /// Of an exception that isn't of the family: the number is 0, the identifier its text.
    failure(std::exception const &exception, unsigned int error_code)
        : identifier_(exception.what()), error_code_(error_code)
    {
    }

    /// Returns the number of the exception's class, or 0 if that isn't of the family.
    [[nodiscard]] fsys_excp_id id() const noexcept { return id_; }

    /// Returns what `what()` of the exception did: the stable identifier, of an
    /// `InvalidArgument` with its message.
    [[nodiscard]] std::string const &identifier() const noexcept { return identifier_; }

    /// Returns the pathname that the failure is about, or nothing.
    [[nodiscard]] std::u16string const &path_name() const noexcept { return path_name_; }

    /// Returns further pathnames.
    [[nodiscard]] std::vector<std::u16string> const &additional_path_names() const noexcept
    {
        return additional_path_names_;
    }

    /// Returns the code of a `SystemError`, else 0.
    [[nodiscard]] unsigned int error_code() const noexcept { return error_code_; }

    /// Returns the line that `describe` makes of the exception.
    [[nodiscard]] std::string describe() const
    {
        if (id_ != fsys_excp_id())
            return detail::description_of(FsysExceptionBase(identifier_.c_str(), id_, path_name_,
                                                            additional_path_names_, error_code_));
        std::string line = detail::visible(identifier_);
        if (error_code_ != 0)
            line += " (code " + std::to_string(error_code_) + ')';
        return line;
    }

    /// That all fields are equal.
    friend bool operator==(failure const &left, failure const &right) noexcept
    {
        return left.id_ == right.id_ && left.identifier_ == right.identifier_ &&
               left.path_name_ == right.path_name_ &&
               left.additional_path_names_ == right.additional_path_names_ &&
               left.error_code_ == right.error_code_;
    }
    /// That not all of them are.
    friend bool operator!=(failure const &left, failure const &right) noexcept
    {
        return !(left == right);
    }

private:
    fsys_excp_id id_ = fsys_excp_id();
    std::string identifier_;
    std::u16string path_name_;
    std::vector<std::u16string> additional_path_names_;
    unsigned int error_code_ = 0;
};

/// What came of an attempt: the result of a call, or the failure that took its place. The
/// exception itself is kept, too: `value` throws it.
template <typename Value>
class [[nodiscard]] outcome
{
public:
    using value_type = Value; ///< what the call returned, without a reference

    /// Of a call that returned.
    outcome(Value value) : state_(std::in_place_index<0>, std::move(value)) {}
    /// Of a call that threw.
    outcome(failure error, std::exception_ptr thrown)
        : state_(std::in_place_index<1>, std::move(error)), thrown_(std::move(thrown))
    {
    }

    /// Returns whether the call returned.
    bool has_value() const noexcept { return state_.index() == 0; }
    explicit operator bool() const noexcept { return has_value(); }

    /// Returns the result. Throws the exception of the call if there is none.
    Value const &value() const &
    {
        demand();
        return std::get<0>(state_);
    }
    Value &&value() &&
    {
        demand();
        return std::get<0>(std::move(state_));
    }
    Value const &operator*() const & { return value(); }
    Value &&operator*() && { return std::move(*this).value(); }
    Value const *operator->() const { return &value(); }

    /// Returns the result, or `other` if there is none.
    Value value_or(Value other) const &
    {
        return has_value() ? std::get<0>(state_) : std::move(other);
    }

    /// Returns the failure. Throws `std::bad_variant_access` if there is none.
    failure const &error() const { return std::get<1>(state_); }

private:
    void demand() const
    {
        if (!has_value())
            std::rethrow_exception(thrown_);
    }

    std::variant<Value, failure> state_;
    std::exception_ptr thrown_;
};

/// That of a call without a result.
template <>
class [[nodiscard]] outcome<void>
{
public:
    using value_type = void; ///< nothing

    /// Of a call that returned.
    outcome() = default;
    /// Of a call that threw.
    outcome(failure error, std::exception_ptr thrown)
        : state_(std::move(error)), thrown_(std::move(thrown))
    {
    }

    /// Returns whether the call returned.
    bool has_value() const noexcept { return state_.index() == 0; }
    explicit operator bool() const noexcept { return has_value(); }
    /// Throws the exception of the call, if there is one.
    void value() const
    {
        if (!has_value())
            std::rethrow_exception(thrown_);
    }
    /// Returns the failure. Throws `std::bad_variant_access` if there is none.
    failure const &error() const { return std::get<1>(state_); }

private:
    std::variant<std::monostate, failure> state_;
    std::exception_ptr thrown_;
};

/// Calls `call` and returns its result, or the failure if it throws of the library's family, a
/// `foundation::ustring` exception, or `std::filesystem::filesystem_error`. All other exceptions
/// pass, `std::bad_alloc` among them. A result that is a reference is copied.
template <typename Call>
auto attempt(Call &&call) -> outcome<std::decay_t<std::invoke_result_t<Call>>>
{
    using result = outcome<std::decay_t<std::invoke_result_t<Call>>>;
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<Call>>) {
            std::invoke(std::forward<Call>(call));
            return result();
        } else {
            return result(std::invoke(std::forward<Call>(call)));
        }
    } catch (FsysExceptionBase const &exception) {
        return result(failure(exception), std::current_exception());
    } catch (foundation::ustring::CtypeExceptionBase const &exception) {
        return result(failure(exception, 0), std::current_exception());
    } catch (std::filesystem::filesystem_error const &exception) {
        return result(failure(exception, static_cast<unsigned int>(exception.code().value())),
                      std::current_exception());
    }
}

/// Throws what `error_code` stands for, as `GetLastError` gave it right after a call of the
/// caller's own, in the words of the library's operations. The pathname goes into the
/// exception as it is.
///
///     2, 3                 PathNotFound (3 beyond 32,767 units: FileNameTooLarge)
///     5, 1920              AccessDenied
///     80, 183              FileExistsError
///     123, 161, 4390       InvalidArgument, without the pathname
///     145                  DirectoryNotEmpty
///     206                  FileNameTooLarge, without the pathname
///     267                  NotDirectoryError
///     any other, also 0    SystemError with the code
[[noreturn]] FL_FILESYSTEM_API void throw_last_error(unsigned int error_code, upath const &p);
[[noreturn]] FL_FILESYSTEM_API void throw_last_error(unsigned int error_code,
                                                     std::u16string const &p);

/// The same for a call with two pathnames: a `SystemError` names the second one beside the
/// first, and the other classes name the first.
[[noreturn]] FL_FILESYSTEM_API void throw_last_error(unsigned int error_code, upath const &p,
                                                     upath const &second);
[[noreturn]] FL_FILESYSTEM_API void
throw_last_error(unsigned int error_code, std::u16string const &p, std::u16string const &second);

// With a path and a literal: see mixed_arguments.hpp.
template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
[[noreturn]] void throw_last_error(unsigned int error_code, First const &p, Second const &second)
{
    throw_last_error(error_code, detail::as_path(p), detail::as_path(second));
}

} // namespace fl::filesystem

#endif
