#pragma once
#include <vcruntime.h>

namespace std {

class exception
{
public:
    exception() noexcept = default;
    explicit exception(char const *what) noexcept : what_(what) {}
    exception(char const *what, int) noexcept : what_(what) {}
    exception(exception const &) noexcept = default;
    exception &operator=(exception const &) noexcept = default;
    virtual ~exception() noexcept = default;
    virtual char const *what() const { return what_; }

private:
    char const *what_ = "";
};

class bad_exception : public exception
{
};

class bad_alloc : public exception
{
public:
    bad_alloc() noexcept = default;

protected:
    bad_alloc(char const *what) noexcept : exception(what, 1) {}
};

class bad_array_new_length : public bad_alloc
{
};

} // namespace std
