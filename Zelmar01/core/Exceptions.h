#pragma once

#include <stdexcept>
#include <string>

namespace Zelmar01 {

/// The base of every exception this library raises. what() is a text in UTF-8, in French where it comes from
/// the table of messages, and fit to be shown to the person at the till.
class Exception : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// An operation asked for at a time, or of an object, that cannot do it.
class EInvalidOperation : public Exception
{
public:
    using Exception::Exception;
};

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

/// A text that does not have the form its reader asks for, such as "Code invalide : 300". The cause names the
/// file and line when the text comes from a file, and is empty otherwise.
class EConvertError : public Exception
{
public:
    explicit EConvertError(const std::string &message, TSystemCause cause = {})
        : Exception(message), m_cause(std::move(cause))
    {
    }

    const TSystemCause &Cause() const { return m_cause; }

private:
    TSystemCause m_cause;
};

/// A file, port or device that could not be opened, read or written. what() is the French message alone; the
/// operating system's reason is kept apart from it.
class EInOutError : public Exception
{
public:
    EInOutError(const std::string &message, TSystemCause cause)
        : Exception(message), m_cause(std::move(cause))
    {
    }

    const TSystemCause &Cause() const { return m_cause; }

private:
    TSystemCause m_cause;
};

/// The cause that an exception of this library carries; null when it carries none.
const TSystemCause *CauseOf(const std::exception &exception);

} // namespace Zelmar01
