#pragma once

#include <sstream>
#include <stdexcept>
#include <string>

/// The little that a test program needs where there is no Qt: TEST(whatIsExpected) { CHECK(...);
/// CHECK_EQUAL(a, b); }
namespace Check
{

struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Makes a test known to runAll().
struct Registration {
    Registration(const char *name, void (*function)());
};

/// Runs every test, prints a line for each and returns how many failed.
int runAll();

std::string narrow(const std::wstring &text);

/// Where the running test program lies, with a "\" at the end.
std::wstring programFolder();

inline std::string shown(const std::wstring &value)
{
    return narrow(value);
}

template <typename Value>
std::string shown(const Value &value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

template <typename Actual, typename Expected>
void compare(const Actual &actual, const Expected &expected, const char *text, int line)
{
    if (!(actual == expected)) {
        throw Failure("line " + std::to_string(line) + ": " + text + "\n    is:       " + shown(actual) +
                      "\n    expected: " + shown(expected));
    }
}

inline void verify(bool holds, const char *text, int line)
{
    if (!holds) {
        throw Failure("line " + std::to_string(line) + ": " + text);
    }
}

} // namespace Check

#define TEST(name)                                                                                           \
    static void name();                                                                                      \
    static const Check::Registration name##Registration(#name, name);                                        \
    static void name()
#define CHECK(condition) Check::verify(static_cast<bool>(condition), #condition, __LINE__)
#define CHECK_EQUAL(actual, expected) Check::compare(actual, expected, #actual, __LINE__)
