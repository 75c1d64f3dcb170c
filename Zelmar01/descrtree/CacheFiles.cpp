#include <Zelmar01/descrtree/CacheFiles.h>

#include <Zelmar01/core/ApplicationDirectory.h>
#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Windows1252Text.h>

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
constexpr std::size_t usualNumbers = 40; // bytes a level for identifiers, separators and line end

bool isCarried(std::string_view bytes)
{
    const auto isControl = [](char c) { return c == '\t' || c == '\r' || c == '\n'; };
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

// Writes the lines of both files into memory.
class TCacheWriter
{
public:
    TCacheWriter(const QString &rootText, const TNodeTextRule &rule, const TDescrRows &rows)
        : m_rows(rows), m_showsCode(rule.AfficherCodeStat)
    {
        const auto root = carried(rootText);
        const auto separator = carried(rule.Separateur);
        m_uncarried.Root = !root;
        m_uncarried.Separator = m_showsCode && !separator;
        m_separator = separator.value_or(std::string());

        m_objects.reserve(rows.Texts().Size() + rows.Count() * usualNumbers);
        m_tree += root.value_or(std::string());
        m_tree += lineEnd;
        m_objects += std::to_string(rows.Count());
        m_objects += lineEnd;
        for (std::size_t row = 0; row < rows.Count(); ++row)
            addRow(row);
    }

    const TUncarried &Uncarried() const { return m_uncarried; }
    const std::string &Tree() const { return m_tree; }
    const std::string &Objects() const { return m_objects; }

private:
    void addRow(std::size_t row)
    {
        const auto &record = m_rows.Record(row);
        const auto &texts = m_rows.Texts();
        m_objects += std::to_string(record.ID);
        m_objects += DescrSeparator;
        m_objects += std::to_string(record.IDPere);
        m_objects += DescrSeparator;
        for (const auto text : {record.LibLong, record.Libelle, record.LibCourt, record.Code}) {
            const auto bytes = texts.Bytes(text);
            if (text.IsWide() || !isCarried(bytes)) {
                m_uncarried.Codes << texts.Text(record.Code);
                return;
            }
            m_objects += bytes;
            m_objects += DescrSeparator;
        }
        m_objects += "01";
        m_objects += lineEnd;

        m_tree.append(m_rows.Depth(row), '\t');
        if (m_showsCode) {
            m_tree += texts.Bytes(record.Code);
            m_tree += m_separator;
        }
        m_tree += texts.Bytes(record.Libelle);
        m_tree += lineEnd;
    }

    const TDescrRows &m_rows;
    const bool m_showsCode;
    std::string m_separator;
    TUncarried m_uncarried;
    std::string m_tree, m_objects;
};

[[noreturn]] void raiseWriteError(const QString &path, const QString &reason)
{
    throw EInOutError("Impossible d'écrire les fichiers de l'arbre des codes",
                      {0, (path + QStringLiteral(" : ") + reason).toStdString(), {}});
}

// A new file beside the one that it is to replace.
class TReplacement
{
public:
    explicit TReplacement(const QString &path) : m_file(path) {}

    void Write(const std::string &bytes)
    {
        const QFileInfo there(m_file.fileName());
        if (there.exists() && !there.isFile())
            raiseWriteError(m_file.fileName(), QStringLiteral("n'est pas un fichier ordinaire"));
        const auto size = static_cast<qint64>(bytes.size());
        check(m_file.open(QIODevice::WriteOnly) && m_file.write(bytes.data(), size) == size &&
              m_file.flush());
    }

    void Replace() { check(m_file.commit()); }

private:
    void check(bool succeeded) const
    {
        if (!succeeded)
            raiseWriteError(m_file.fileName(), m_file.errorString());
    }

    QSaveFile m_file;
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
    const TCacheWriter lines(rootText, rule, rows);
    if (!lines.Uncarried().IsEmpty())
        return lines.Uncarried();
    TReplacement tree(files.Tree), objects(files.Objects);
    tree.Write(lines.Tree());
    objects.Write(lines.Objects());
    tree.Replace();
    objects.Replace();
    return {};
}

void RemoveCacheFiles(const TCacheFiles &files)
{
    for (const auto &path : {files.Objects, files.Tree}) {
        QFile file(path);
        if (!file.remove() && file.exists())
            throw EInOutError("Impossible de supprimer les fichiers de l'arbre des codes",
                              {0, (path + QStringLiteral(" : ") + file.errorString()).toStdString(), {}});
    }
}

} // namespace Zelmar01
