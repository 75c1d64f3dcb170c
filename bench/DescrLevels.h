#pragma once

#include <Zelmar01/descrtree/CacheFiles.h>

#include <QFile>

#include <cstdlib>
#include <malloc.h>
#include <string_view>

/// Keeps the compiler from leaving out work whose result nobody looks at.
inline volatile std::size_t sink;

/// A hierarchy in which all parents have as many children; the identifiers go up in steps.
class Levels
{
public:
    Levels(std::size_t count, int step, std::size_t departments = 9, int depth = 4)
        : m_count(count), m_step(step), m_departments(departments), m_depth(depth)
    {
        while (departments * levelsBelow(depth) < count)
            ++m_children;
        addBelow(Zelmar01::TDescr());
    }

    Zelmar01::TDescrRows Rows;

private:
    static constexpr const char *labels[] = {"BAGUES",        "OR JAUNE 18 CARATS", "ALLIANCES",
                                             "ARGENT RHODIÉ", "BRACELETS",          "PLAQUÉ OR",
                                             "MONTRES HOMME", "PERLES DE CULTURE"};
    static constexpr char digits[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

    // A level and all below it.
    std::size_t levelsBelow(int depth) const
    {
        return depth == 1 ? 1 : 1 + m_children * levelsBelow(depth - 1);
    }

    void addBelow(const Zelmar01::TDescr &parent)
    {
        const bool isRoot = parent.Code.isEmpty();
        for (std::size_t i = isRoot; i < (isRoot ? m_departments + 1 : m_children) && Rows.Count() < m_count;
             ++i) {
            const auto label = QString::fromUtf8(labels[Rows.Count() % 8]);
            const Zelmar01::TDescr descr(m_nextId, parent.ID, Zelmar01::LongLabel(parent.LibLong, label),
                                         label, label.left(10), parent.Code + QLatin1Char(digits[i]));
            m_nextId += m_step;
            Rows.Append(descr);
            if (descr.Code.size() < m_depth)
                addBelow(descr);
        }
    }

    const std::size_t m_count;
    const int m_step;
    const std::size_t m_departments;
    const int m_depth;
    std::size_t m_children = 1;
    int m_nextId = 1;
};

/// The bytes of a file that was made here.
inline QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        std::abort();
    return file.readAll();
}

/// The least that must be done to load: the bytes of both files, cut into lines and values.
inline void readAndSplit(const Zelmar01::TCacheFiles &files)
{
    const auto eachLine = [](const QByteArray &bytes, auto take) {
        std::string_view rest(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        for (std::size_t end; (end = rest.find('\n')) != rest.npos; rest.remove_prefix(end + 1))
            take(rest.substr(0, end));
    };
    std::size_t sum = 0;
    eachLine(bytesOf(files.Tree), [&](std::string_view line) { sum += line.size(); });
    eachLine(bytesOf(files.Objects), [&](std::string_view line) {
        for (std::size_t end; (end = line.find("{@}")) != line.npos; line.remove_prefix(end + 3))
            sum += end;
    });
    sink = sum;
}

/// The bytes of the texts alone, for each level.
inline double textBytesALevel(const Zelmar01::TDescrRows &rows)
{
    qsizetype characters = 0;
    for (std::size_t row = 0; row < rows.Count(); ++row) {
        const auto level = rows.Descr(row);
        characters += level.Code.size() + level.Libelle.size() + level.LibLong.size() + level.LibCourt.size();
    }
    return static_cast<double>(characters) / static_cast<double>(rows.Count());
}

/// The bytes that the allocator has given away.
inline std::size_t allocated()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// The bytes of what `make` returns, for each of `count` levels.
template<class Make>
double memoryALevel(std::size_t count, Make make)
{
    const auto before = allocated();
    const auto made = make();
    return static_cast<double>(allocated() - before) / static_cast<double>(count);
}
