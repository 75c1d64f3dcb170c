#include <Zelmar01/descrtree/CacheFiles.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>
#include <Zelmar01/core/Windows1252.h>
#include <Zelmar01/core/Windows1252Text.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <string_view>
#include <vector>

namespace Zelmar01 {

namespace {

constexpr qint64 largestFile = 0x7FFF'FFFF;
constexpr std::size_t shortestObjectLine = 20; // "1{@}0{@}{@}{@}{@}{@}" and no line end
constexpr int longestFirstLine = 64;
constexpr std::size_t longestQuote = 40;

[[noreturn]] void raiseReadError(const QString &path, const QString &reason)
{
    throw EInOutError(Translate("Zelmar01", "Impossible de lire les fichiers de l'arbre des codes"),
                      {0, (path + QStringLiteral(" : ") + reason).toStdString(), {}});
}

// Only an ordinary file is opened: a pipe in its place would keep the caller waiting.
void openFile(QFile &file)
{
    const QFileInfo info(file.fileName());
    if (info.exists() && !info.isFile())
        raiseReadError(file.fileName(),
                       QCoreApplication::translate("Zelmar01", "n'est pas un fichier ordinaire"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        raiseReadError(file.fileName(), file.errorString());
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    openFile(file);
    if (file.size() > largestFile)
        raiseReadError(path, QCoreApplication::translate("Zelmar01", "fichier trop grand"));
    auto bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        raiseReadError(path, file.errorString());
    if (bytes.size() > largestFile)
        raiseReadError(path, QCoreApplication::translate("Zelmar01", "fichier trop grand"));
    return bytes;
}

std::string quoted(std::string_view bytes)
{
    return "« " + Utf8FromWindows1252(bytes.substr(0, longestQuote)) + " »";
}

std::string notANumber(std::string_view bytes)
{
    return Filled(Translate("Zelmar01", "nombre entier attendu au lieu de %1"), {quoted(bytes)});
}

std::string placeOf(const QString &path, std::size_t line)
{
    return Filled(Translate("Zelmar01", "%1, ligne %2"), {path.toStdString(), std::to_string(line)});
}

int numberOfLevels(const QString &path, std::string_view line)
{
    if (const auto number = DescrInteger(line))
        return *number;
    throw EConvertError(placeOf(path, 1) + " : " + notANumber(line));
}

// Takes lines off a text. They end with LF, a CR before it belongs to the end, and the last one may go
// without.
class TLines
{
public:
    explicit TLines(const QByteArray &text) : m_rest(text.constData(), static_cast<std::size_t>(text.size()))
    {
    }

    std::size_t Number() const { return m_number; }

    bool Take(std::string_view &line)
    {
        if (m_rest.empty())
            return false;
        const auto end = std::min(m_rest.find('\n'), m_rest.size());
        line = m_rest.substr(0, end);
        m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        ++m_number;
        return true;
    }

private:
    std::string_view m_rest;
    std::size_t m_number = 0;
};

// Takes the levels off an object file, one after the other.
class TObjectReader
{
public:
    explicit TObjectReader(const QString &path) : m_path(path), m_bytes(contentsOf(path)), m_lines(m_bytes)
    {
        std::string_view line;
        m_lines.Take(line);
        m_recorded = numberOfLevels(m_path, line);
        m_records.reserve(std::min(static_cast<std::size_t>(std::max(m_recorded, 0)),
                                   static_cast<std::size_t>(m_bytes.size()) / shortestObjectLine));
    }

    /// False behind the last level; raises when there are not as many as were recorded.
    bool Take()
    {
        std::string_view line;
        if (m_lines.Take(line)) {
            takeRecord(line);
            return true;
        }
        if (static_cast<std::int64_t>(m_records.size()) != m_recorded)
            throw EConvertError(placeOf(m_path, 1) + " : " +
                                Filled(Translate("Zelmar01", "%1 niveaux annoncés, %2 trouvés"),
                                       {std::to_string(m_recorded), std::to_string(m_records.size())}));
        return false;
    }

    std::size_t Count() const { return m_records.size(); }
    std::string_view Code() const { return bytesOf(m_records.back().Code); }
    std::string_view Libelle() const { return bytesOf(m_records.back().Libelle); }

    TDescrRows Rows() { return {TDescrTexts(std::move(m_bytes)), std::move(m_records)}; }

private:
    std::string_view bytesOf(TDescrText text) const
    {
        return {m_bytes.constData() + text.Begin(), text.Size()};
    }

    void takeRecord(std::string_view line)
    {
        const auto raise = [this](const std::string &reason) {
            throw EConvertError(placeOf(m_path, m_lines.Number()) + " : " + reason);
        };
        const auto value = [&] {
            const auto end = line.find(DescrSeparator);
            if (end == line.npos)
                raise(Translate("Zelmar01", "niveau incomplet"));
            const auto taken = line.substr(0, end);
            line.remove_prefix(end + DescrSeparator.size());
            return taken;
        };
        const auto integer = [&] {
            const auto taken = value();
            const auto number = DescrInteger(taken);
            if (!number)
                raise(notANumber(taken));
            return *number;
        };
        const auto text = [&] {
            const auto taken = value();
            return TDescrText(static_cast<std::uint32_t>(taken.data() - m_bytes.constData()),
                              static_cast<std::uint32_t>(taken.size()), false);
        };
        // The initializers are evaluated from left to right.
        m_records.push_back(TDescrRecord{integer(), integer(), text(), text(), text(), text()});
    }

    const QString m_path;
    QByteArray m_bytes;
    TLines m_lines;
    int m_recorded = 0;
    std::vector<TDescrRecord> m_records;
};

class TCacheReader
{
public:
    TCacheReader(const TCacheFiles &files, const TNodeTextRule &rule)
        : m_treePath(files.Tree), m_showsCode(rule.AfficherCodeStat), m_treeBytes(contentsOf(files.Tree)),
          m_treeLines(m_treeBytes), m_objects(files.Objects)
    {
        auto separator = ToWindows1252(rule.Separateur);
        if (m_showsCode && !separator.Missing.isEmpty())
            throw EConvertError(m_treePath.toStdString() + " : " +
                                Translate("Zelmar01", "séparateur hors de Windows-1252"));
        m_separator = std::move(separator.Bytes);
    }

    TDescrTree Read()
    {
        std::string_view root;
        if (!m_treeLines.Take(root) || root.starts_with('\t'))
            raise(1, Translate("Zelmar01", "la racine manque"));
        std::string_view text;
        while (m_objects.Take()) {
            if (!m_treeLines.Take(text))
                raise(m_treeLines.Number() + 1, Translate("Zelmar01", "le niveau manque"));
            checkText(text);
        }
        if (m_treeLines.Take(text))
            raise(m_treeLines.Number(), Translate("Zelmar01", "niveau absent de l'autre fichier"));
        return {FromWindows1252(root), m_objects.Rows()};
    }

private:
    [[noreturn]] void raise(std::size_t line, const std::string &reason) const
    {
        auto place = placeOf(m_treePath, line);
        if (line == m_objects.Count() + 1 && m_objects.Count() > 0)
            place = Filled(Translate("Zelmar01", "%1, code %2"), {place, quoted(m_objects.Code())});
        throw EConvertError(place + " : " + reason);
    }

    void checkText(std::string_view text)
    {
        const auto code = m_objects.Code();
        const auto depth = std::min(text.find_first_not_of('\t'), text.size());
        if (depth != std::max<std::size_t>(code.size(), 1))
            raise(m_treeLines.Number(), Translate("Zelmar01", "retrait différent de la longueur du code"));
        if (depth > m_depth + 1)
            raise(m_treeLines.Number(), Translate("Zelmar01", "niveau sans parent"));
        m_depth = depth;

        text.remove_prefix(depth);
        if (m_showsCode && text.starts_with(code) && text.substr(code.size()).starts_with(m_separator))
            text.remove_prefix(code.size() + m_separator.size());
        else if (m_showsCode)
            raise(m_treeLines.Number(), Translate("Zelmar01", "texte sans code et séparateur du niveau"));
        if (text != m_objects.Libelle())
            raise(m_treeLines.Number(), Translate("Zelmar01", "texte différent du libellé du niveau"));
    }

    const QString m_treePath;
    const bool m_showsCode;
    const QByteArray m_treeBytes;
    TLines m_treeLines;
    TObjectReader m_objects;
    std::string m_separator;
    std::size_t m_depth = 0;
};

} // namespace

int RecordedCount(const QString &objectsFile)
{
    QFile file(objectsFile);
    if (!file.exists())
        return -2;
    openFile(file);
    std::string_view line;
    const auto bytes = file.readLine(longestFirstLine);
    TLines(bytes).Take(line);
    return numberOfLevels(objectsFile, line);
}

TDescrTree ReadCacheFiles(const TCacheFiles &files, const TNodeTextRule &rule)
{
    return TCacheReader(files, rule).Read();
}

TDescrRows ReadObjectFile(const QString &path)
{
    TObjectReader reader(path);
    while (reader.Take())
        continue;
    return reader.Rows();
}

} // namespace Zelmar01
