#pragma once

#include <QFlags>
#include <QString>

#include <vector>

namespace Zelmar01 {

enum TIndexOption { ixDescending = 1, ixCaseInsensitive = 2 };
Q_DECLARE_FLAGS(TIndexOptions, TIndexOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(TIndexOptions)

/// An order of rows. Field lists are names separated by ";".
struct TIndexDef
{
    QString Name;
    QString Fields;
    /// With ixCaseInsensitive texts compare without letter case. With ixDescending the fields among
    /// DescFields run backwards, and all of them when DescFields is empty.
    TIndexOptions Options;
    QString DescFields;

    bool IsDescending(const QString &field) const;
};

/// The indexes of a client dataset.
class TIndexDefs
{
public:
    int Count() const { return static_cast<int>(m_defs.size()); }
    /// Raises EDatabaseError for an index out of range.
    const TIndexDef &operator[](int index) const;
    /// The place of the index of that name, in any letter case; -1 when there is none.
    int IndexOf(const QString &name) const;
    /// The index of that name. Raises EDatabaseError when there is none.
    const TIndexDef &Find(const QString &name) const;

    /// Adds an index. Raises EDatabaseError when there is one of that name.
    void Add(const TIndexDef &def);
    /// Raises EDatabaseError when there is none of that name.
    void Delete(const QString &name);
    void Clear() { m_defs.clear(); }

private:
    std::vector<TIndexDef> m_defs;
};

} // namespace Zelmar01
