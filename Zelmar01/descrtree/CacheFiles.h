#pragma once

#include <Zelmar01/descrtree/DescrTree.h>

#include <QString>
#include <QStringList>

namespace Zelmar01 {

/// The two local files that keep the tree between two starts, so that it need not be read from the database.
///
/// Both are Windows-1252 with one record a line, ended by CR LF. The tree file has the root's text, then the
/// text of each level behind one tab a character of its code (one tab when the code is empty). The object
/// file has the number of levels, then the text form of each level, ended by "01" in place of "0". Line k of
/// one and line k of the other belong to the same level.
struct TCacheFiles
{
    QString Tree;    ///< path of ...Arbre.dat
    QString Objects; ///< path of ...Objets.dat

    bool Exist() const;
};

/// The path prefix of a tree that was not told where its files are: "tmp" in the application's directory.
QString DefaultCachePrefix();

/// The files of a prefix, to which their names are appended as they stand: "x" gives xArbre.dat, "x/" a
/// folder with Arbre.dat. A prefix without a directory is taken from the application's directory.
TCacheFiles CacheFilesOf(const QString &prefix);

/// The number of levels on the first line of an object file; -2 when there is no such file. Raises
/// EConvertError for anything but a number and EInOutError when the file cannot be read.
int RecordedCount(const QString &objectsFile);

/// What the files cannot carry: a tab, a line break, "{@}" or a character outside Windows-1252.
struct TUncarried
{
    bool Root = false;      ///< in the root's text
    bool Separator = false; ///< in the separator of the rule, if it is shown
    QStringList Codes;      ///< the codes of the levels that have it in one of their texts, in their order

    bool IsEmpty() const { return !Root && !Separator && Codes.isEmpty(); }
};

/// Writes both files, or none when there is something that they cannot carry. The files that were there are
/// replaced when both new ones are complete; of a failure before that the old pair is what remains, and one
/// between the two replacements leaves a pair that does not fit, which ReadCacheFiles() notices. What a
/// program that was killed left half-written beside them goes when it is an hour old. Raises EInOutError.
TUncarried WriteCacheFiles(const TCacheFiles &files, const QString &rootText, const TNodeTextRule &rule,
                           const TDescrRows &rows);

/// Reads both files. They must fit each other: as many levels in both as the object file records, each as
/// deep as its code is long and at most one deeper than the one before it, and with the text that the rule
/// gives it. Whether a code begins with its parent's does not matter: a level hangs where the file puts it.
/// Raises EConvertError for a pair that does not fit or is malformed, naming file, line and code, and
/// EInOutError for a file that is missing or cannot be read.
TDescrTree ReadCacheFiles(const TCacheFiles &files, const TNodeTextRule &rule);

/// Reads an object file alone. Raises as ReadCacheFiles() does.
TDescrRows ReadObjectFile(const QString &path);

/// Removes those of the files that are there. Raises EInOutError when one remains.
void RemoveCacheFiles(const TCacheFiles &files);

} // namespace Zelmar01
