#pragma once

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Messages.h>
#include <Zelmar01/tasks/service/TaskService.h>

#include <QString>
#include <QVariantList>

#include <utility>

namespace Zelmar01 {

/// What TTaskScheduler raises, and TTaskItem::Activate.
class ESchedulerError : public Exception
{
public:
    using Exception::Exception;
};

/// What TTaskItem raises, and TTaskScheduler::CreateNewItem for a job that there is already.
class ETaskError : public Exception
{
public:
    using Exception::Exception;
};

/// What TTriggers raises.
class ETriggerError : public Exception
{
public:
    using Exception::Exception;
};

/// What TTaskPropertiesDialog raises.
class ETaskDialogError : public Exception
{
public:
    using Exception::Exception;
};

/// A call of the task service that failed: what() is what the service says of the result code, and the cause
/// what it knows beyond that.
class EOleSysError : public Exception
{
public:
    EOleSysError(const std::string &message, TTaskResult errorCode, TSystemCause cause = {})
        : Exception(message, std::move(cause)), m_errorCode(errorCode)
    {
    }

    TTaskResult ErrorCode() const { return m_errorCode; }

private:
    TTaskResult m_errorCode;
};

/// Raises EOleSysError for a result that is a failure.
void OleCheck(ITaskService &service, TTaskResult result);

/// A message of the library with each %s and %d, from left to right, replaced by the next of `args`.
QString Format(const QString &fmt, const QVariantList &args);
QString Format(TMessage message, const QVariantList &args = {});

} // namespace Zelmar01
