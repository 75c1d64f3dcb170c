#pragma once

#include <Zelmar01/core/DateTime.h>
#include <Zelmar01/tasks/service/MSTask.h>

#include <QString>

#include <string>

namespace Zelmar01 {

/// Compare two texts the way people sort names; the answer is -1, 0 or 1. The order is the same on every
/// system and in every locale. Each of these decides where those before it found no difference:
///
/// 1. the letters, whatever their case and accents ("œ" is "oe", "ß" is "ss"), digits before letters, and
///    anything else before digits;
/// 2. the accents: "cote", "coté", "côte";
/// 3. letter case, small before capital, and at last the way the text is encoded. WCompareText leaves this
///    out.
///
/// So WCompareStr never disagrees with WCompareText but where that says 0, and is itself 0 only for two texts
/// that are the same: in a list that WCompareText sorted, with texts that it holds equal in the order of
/// WCompareStr, a binary search by WCompareStr finds each text in its exact spelling and in no other.
int WCompareText(const QString &a, const QString &b);
int WCompareStr(const QString &a, const QString &b);

/// What the two functions above see of a text, made once for each text of a long list.
class TCollationKey
{
public:
    explicit TCollationKey(const QString &text);

    int CompareText(const TCollationKey &other) const;
    int CompareStr(const TCollationKey &other) const;

    /// The letters, to be compared as bytes; where they differ both functions say no more than they do.
    const std::string &Letters() const { return m_letters; }

private:
    std::string m_letters; // of the first level
    QString m_text;
};

/// A moment of the task service as a TDateTime. Nothing is validated, and the day of the week does not
/// matter: a record of zeros, which the service uses for "never", is -693959.
TDateTime SysTimeToDateTime(SYSTEMTIME time);

/// A moment for the task service, to the millisecond. Raises EConvertError outside the years 1 to 9999.
SYSTEMTIME DateTimeToSystemTime(TDateTime moment);

/// The file name of a job: `name` with ".job" behind it, unless it ends so already, in any letter case.
QString WithJobEnding(const QString &name);

/// The name of a job: `fileName` without the ".job" at its end, in any letter case.
QString WithoutJobEnding(const QString &fileName);

} // namespace Zelmar01
