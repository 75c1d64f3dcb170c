#pragma once

#include "Levels.h"

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/descrtree/CacheFiles.h>

#include <support/TempFolder.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

/// A folder with room for a pair of cache files.
class CacheFixture : public testing::Test
{
protected:
    using TCacheFiles = Zelmar01::TCacheFiles;

    TCacheFiles pair() const
    {
        return Zelmar01::CacheFilesOf(QString::fromStdString((m_folder / "x").string()));
    }

    Zelmar01::TUncarried write(const std::vector<Zelmar01::TDescr> &levels)
    {
        return WriteCacheFiles(pair(), m_root, m_rule, rowsOf(levels));
    }

    Zelmar01::TDescrTree read() const { return ReadCacheFiles(pair(), m_rule); }

    /// What reading raises; empty when it raises nothing.
    std::string readError() const
    {
        try {
            read();
        } catch (const Zelmar01::EConvertError &error) {
            return error.what();
        }
        return {};
    }

    static std::string contentsOf(const QString &path)
    {
        std::ostringstream text;
        text << std::ifstream(path.toStdString(), std::ios::binary).rdbuf();
        return text.str();
    }

    static void put(const QString &path, std::string_view text)
    {
        std::ofstream(path.toStdString(), std::ios::binary | std::ios::trunc) << text;
    }

    TempFolder m_folder;
    QString m_root = QStringLiteral("Corvantix");
    Zelmar01::TNodeTextRule m_rule{true, QStringLiteral("-")};
};
