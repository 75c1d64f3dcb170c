#include <Zelmar01/descrtree/CacheFiles.h>

#include <Zelmar01/core/ApplicationDirectory.h>
#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>
#include <Zelmar01/core/Windows1252Text.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace Zelmar01 {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr qint64 longestWriting = 3600;                        // seconds
constexpr qsizetype lettersOfTemporary = 6;                    // that QSaveFile appends to a name
constexpr std::size_t blockSize = 64 * 1024, usualLine = 1024; // bytes

bool isCarried(std::string_view bytes)
{
    const auto isControl = [](char c) { // most are told by the first comparison
        return static_cast<unsigned char>(c) <= '\r' && (c == '\t' || c == '\r' || c == '\n');
    };
    return std::none_of(bytes.begin(), bytes.end(), isControl) && bytes.find(DescrSeparator) == bytes.npos;
}

// A text in the bytes of the files; none when they cannot carry it.
std::optional<std::string> carried(const QString &text)
{
    auto bytes = ToWindows1252(text);
    if (!bytes.Missing.isEmpty() || !isCarried(bytes.Bytes))
        return std::nullopt;
    return std::move(bytes.Bytes);
}

[[noreturn]] void raiseWriteError(const QString &path, const QString &reason)
{
    throw EInOutError(Translate("Zelmar01", "Impossible d'écrire les fichiers de l'arbre des codes"),
                      {0, (path + QStringLiteral(" : ") + reason).toStdString(), {}});
}

// What a program that was killed left half-written beside the file, unless another one is still at it.
void removeLeftovers(const QFileInfo &file)
{
    const auto old = QDateTime::currentDateTime().addSecs(-longestWriting);
    const auto start = file.fileName() + u'.';
    for (const auto &name : file.dir().entryList(QDir::Files)) {
        const QFileInfo left(file.dir(), name);
        const bool isTemporary = name.startsWith(start) && name.size() == start.size() + lettersOfTemporary;
        if (isTemporary && left.lastModified() < old)
            QFile::remove(left.filePath());
    }
}

// A new file beside the one that it is to replace.
class TReplacement
{
public:
    explicit TReplacement(const QString &path) : m_file(path)
    {
        const QFileInfo there(path);
        if (there.exists() && !there.isFile())
            raiseWriteError(path, QCoreApplication::translate("Zelmar01", "n'est pas un fichier ordinaire"));
        removeLeftovers(there);
        check(m_file.open(QIODevice::WriteOnly));
        m_text.reserve(blockSize + usualLine);
    }

    /// To append the next line to.
    std::string &Text() { return m_text; }

    void EndLine()
    {
        m_text += lineEnd;
        if (m_text.size() >= blockSize)
            write();
    }

    void Complete()
    {
        write();
        check(m_file.flush());
    }

    void Replace() { check(m_file.commit()); }

private:
    void write()
    {
        const auto size = static_cast<qint64>(m_text.size());
        check(m_file.write(m_text.data(), size) == size);
        m_text.clear();
    }

    void check(bool succeeded) const
    {
        if (!succeeded)
            raiseWriteError(m_file.fileName(), m_file.errorString());
    }

    QSaveFile m_file;
    std::string m_text;
};

// Writes the lines of both files. They are of no use once there is something uncarried.
class TCacheWriter
{
public:
    TCacheWriter(const TCacheFiles &files, const TNodeTextRule &rule)
        : m_showsCode(rule.AfficherCodeStat), m_tree(files.Tree), m_objects(files.Objects)
    {
        const auto separator = carried(rule.Separateur);
        m_uncarried.Separator = m_showsCode && !separator;
        m_separator = separator.value_or(std::string());
    }

    TUncarried Write(const QString &rootText, const TDescrRows &rows)
    {
        const auto root = carried(rootText);
        m_uncarried.Root = !root;
        m_tree.Text() += root.value_or(std::string());
        m_tree.EndLine();
        m_objects.Text() += std::to_string(rows.Count());
        m_objects.EndLine();
        for (std::size_t row = 0; row < rows.Count(); ++row)
            addRow(rows, row);
        if (m_uncarried.IsEmpty()) {
            m_tree.Complete();
            m_objects.Complete();
            m_tree.Replace();
            m_objects.Replace();
        }
        return m_uncarried;
    }

private:
    void addRow(const TDescrRows &rows, std::size_t row)
    {
        const auto &record = rows.Record(row);
        const auto &texts = rows.Texts();
        auto &object = m_objects.Text();
        object += std::to_string(record.ID);
        object += DescrSeparator;
        object += std::to_string(record.IDPere);
        object += DescrSeparator;
        for (const auto text : {record.LibLong, record.Libelle, record.LibCourt, record.Code}) {
            const auto bytes = texts.Bytes(text);
            if (text.IsWide() || !isCarried(bytes)) {
                m_uncarried.Codes << texts.Text(record.Code);
                return;
            }
            object += bytes;
            object += DescrSeparator;
        }
        object += "01";
        m_objects.EndLine();

        auto &node = m_tree.Text();
        node.append(rows.Depth(row), '\t');
        if (m_showsCode) {
            node += texts.Bytes(record.Code);
            node += m_separator;
        }
        node += texts.Bytes(record.Libelle);
        m_tree.EndLine();
    }

    const bool m_showsCode;
    TReplacement m_tree, m_objects;
    std::string m_separator;
    TUncarried m_uncarried;
};

QString inApplicationDirectory(const QString &name)
{
    const auto directory = (ApplicationDirectory() / "").u16string();
    return QString::fromStdU16String(directory) + name;
}

} // namespace

bool TCacheFiles::Exist() const
{
    return QFileInfo::exists(Tree) && QFileInfo::exists(Objects);
}

QString DefaultCachePrefix()
{
    return inApplicationDirectory(QStringLiteral("tmp"));
}

TCacheFiles CacheFilesOf(const QString &prefix)
{
    const bool hasDirectory = QDir::fromNativeSeparators(prefix).contains(u'/');
    const QString whole = hasDirectory ? prefix : inApplicationDirectory(prefix);
    return {whole + QStringLiteral("Arbre.dat"), whole + QStringLiteral("Objets.dat")};
}

TUncarried WriteCacheFiles(const TCacheFiles &files, const QString &rootText, const TNodeTextRule &rule,
                           const TDescrRows &rows)
{
    return TCacheWriter(files, rule).Write(rootText, rows);
}

void RemoveCacheFiles(const TCacheFiles &files)
{
    for (const auto &path : {files.Objects, files.Tree}) {
        QFile file(path);
        if (!file.remove() && file.exists())
            throw EInOutError(
                Translate("Zelmar01", "Impossible de supprimer les fichiers de l'arbre des codes"),
                {0, (path + QStringLiteral(" : ") + file.errorString()).toStdString(), {}});
    }
}

} // namespace Zelmar01
