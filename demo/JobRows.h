#pragma once

#include <Zelmar01/tasks/saTask.h>

#include <QString>
#include <QStringList>

namespace Shop {

/// A job in words, as a list shows it.
struct TJobRow
{
    QString Name;
    QString Next, Last; ///< "jamais" where there is none
    QString Result;     ///< of the last run
    QString Status;
    QString Schedule;
    bool IsReadable = true;

    /// In the order of the list's columns.
    QStringList Texts() const { return {Name, Next, Last, Result, Status, Schedule}; }
};

/// Opens a job and tells how things are with it. A job that cannot be read is told so in its row.
TJobRow ReadJobRow(Zelmar01::TTaskItem &item);

} // namespace Shop
