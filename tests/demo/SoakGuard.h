#pragma once

#include <QObject>
#include <QUrl>

#include <filesystem>

/// Before the application is made: everything that programs look up in the environment is in that folder, or
/// nowhere.
void StayInside(const std::filesystem::path &folder);

/// After each input: takes back what the next one could lead out of the folder with.
void KeepInside(const QString &folder);

/// Takes away what would last longer than the whole run: a million rows.
void KeepShort(const QObject &window);

/// Takes the addresses that links would open, as long as it lives.
class LinksGoNowhere : public QObject
{
    Q_OBJECT
public:
    LinksGoNowhere();
    ~LinksGoNowhere() override;

public slots:
    void Take(const QUrl &) {}
};
