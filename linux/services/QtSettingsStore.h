// The settings store on QSettings: settings, baselines and history in an INI file of the user's.
#pragma once

#include "platform/SettingsStore.h"

#include <QSettings>
#include <QString>

#include <optional>
#include <string>

namespace quorvane {

// Values go in as Qt types (bool, qint64, double, UTF-8 text, QByteArray) and
// come back as QSettings gives them. Within one process that is the type
// written; once the file is read again from disk (the next launch), the INI
// format answers every scalar as text ("true", "42", "30.7"), which is handed
// on as std::string for Defaults to convert. Bytes survive as bytes.
//
// Keys are the program's own texts. A key that is empty or only slashes is
// never written, read or removed: QSettings would take it for the whole file.
class QtSettingsStore : public SettingsStore {
public:
    // $XDG_CONFIG_HOME/Quorvane/Quorvane.conf ($HOME/.config when unset).
    QtSettingsStore();
    // An INI file at `filePath`.
    explicit QtSettingsStore(const QString& filePath);

    QString fileName() const { return m_settings.fileName(); }

    std::optional<SettingValue> value(const std::string& key) const override;
    // Flushed to disk before returning. Text that is not valid UTF-8 is stored
    // with U+FFFD in place of the bad bytes.
    void setValue(const std::string& key, const SettingValue& value) override;
    void remove(const std::string& key) override;

private:
    // Mutable: a read first takes in what other processes wrote (the command
    // line and the desktop app share the file), so a read-modify-write starts
    // from the file as it is, not from this process's cache.
    mutable QSettings m_settings;
};

} // namespace quorvane
