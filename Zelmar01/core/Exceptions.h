#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace Zelmar01 {

/// Where and why an operation failed, and what a person can do about it.
struct TSystemCause
{
    /// errno, GetLastError() or a server's status code; 0 when there is none.
    int Code = 0;
    /// UTF-8: the file, device or server, and the reason.
    std::string Text;
    /// UTF-8: the way out, such as the group a user must join, or what to look at first; empty when none is
    /// known.
    std::string Remedy;

    /// Text and remedy as one line.
    std::string Words() const;
};

/// The cause that `errno` value `code` stands for, met while working on `subject` (a path or a server). The
/// usual reasons are in French, others in the system's own words.
TSystemCause CauseFromErrno(int code, const std::string &subject);

/// The base of every exception this library raises. what() is a text in UTF-8, in French where it comes from
/// the table of messages, and fit to be shown to the person at the till. What the operating system, a server
/// or a database said is kept apart from it.
class Exception : public std::runtime_error
{
public:
    explicit Exception(const std::string &message, TSystemCause cause = {})
        : std::runtime_error(message), m_cause(std::move(cause))
    {
    }

    /// Its Text is empty when nothing else is known.
    const TSystemCause &Cause() const { return m_cause; }

private:
    TSystemCause m_cause;
};

/// An operation asked for at a time, or of an object, that cannot do it.
class EInvalidOperation : public Exception
{
public:
    using Exception::Exception;
};

/// A text that does not have the form its reader asks for, such as "Code invalide : 300". The cause names the
/// file and line when the text comes from a file.
class EConvertError : public Exception
{
public:
    using Exception::Exception;
};

/// A file, port or device that could not be opened, read or written. The cause always says which and why.
class EInOutError : public Exception
{
public:
    using Exception::Exception;
};

/// The cause that an exception of this library carries; null when it carries none.
const TSystemCause *CauseOf(const std::exception &exception);

} // namespace Zelmar01
