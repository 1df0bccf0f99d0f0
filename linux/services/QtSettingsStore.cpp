#include "services/QtSettingsStore.h"

#include <QByteArray>
#include <QMetaType>
#include <QStringList>
#include <QVariant>

#include <cstdint>
#include <limits>
#include <type_traits>
#include <variant>

namespace quorvane {

namespace {

QString qtKey(const std::string& key) {
    return QString::fromStdString(key);
}

// QSettings drops the slashes around a key; one made only of slashes (or
// nothing) would then name the root, and remove() would empty the file.
bool isUsable(const std::string& key) {
    return key.find_first_not_of('/') != std::string::npos;
}

QVariant toVariant(const SettingValue& value) {
    return std::visit(
        [](const auto& held) -> QVariant {
            using T = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<T, bool>) {
                return QVariant(held);
            } else if constexpr (std::is_same_v<T, std::int64_t>) {
                return QVariant(static_cast<qint64>(held));
            } else if constexpr (std::is_same_v<T, double>) {
                return QVariant(held);
            } else if constexpr (std::is_same_v<T, std::string>) {
                return QVariant(QString::fromStdString(held));
            } else {
                return QVariant(QByteArray(held.bytes.data(), static_cast<qsizetype>(held.bytes.size())));
            }
        },
        value);
}

std::optional<SettingValue> fromVariant(const QVariant& variant) {
    switch (variant.metaType().id()) {
    case QMetaType::Bool:
        return SettingValue(variant.toBool());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
        return SettingValue(static_cast<std::int64_t>(variant.toLongLong()));
    case QMetaType::ULongLong: {
        qulonglong number = variant.toULongLong();
        if (number > static_cast<qulonglong>(std::numeric_limits<std::int64_t>::max())) {
            return SettingValue(static_cast<double>(number));
        }
        return SettingValue(static_cast<std::int64_t>(number));
    }
    case QMetaType::Double:
    case QMetaType::Float:
        return SettingValue(variant.toDouble());
    case QMetaType::QString:
        return SettingValue(variant.toString().toStdString());
    case QMetaType::QByteArray: {
        QByteArray bytes = variant.toByteArray();
        return SettingValue(
            SettingBytes{std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()))});
    }
    case QMetaType::QStringList:
        // An unquoted value with commas, as a hand edit of the file leaves it;
        // joined back, it reads as the text that was typed.
        return SettingValue(variant.toStringList().join(QStringLiteral(", ")).toStdString());
    default:
        // A value another program wrote in QSettings' own @Variant form: kept
        // as text where Qt can give one, never mistaken for a value of ours.
        if (variant.isValid() && variant.canConvert<QString>()) {
            return SettingValue(variant.toString().toStdString());
        }
        return std::nullopt;
    }
}

} // namespace

QtSettingsStore::QtSettingsStore()
    // The native format on Linux is the INI one, under the name ".conf"; asking
    // for IniFormat by name would make it ".ini".
    : m_settings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Quorvane"),
                 QStringLiteral("Quorvane")) {}

QtSettingsStore::QtSettingsStore(const QString& filePath)
    : m_settings(filePath, QSettings::IniFormat) {}

std::optional<SettingValue> QtSettingsStore::value(const std::string& key) const {
    if (!isUsable(key)) {
        return std::nullopt;
    }
    // Rereads the file when another process changed it since; a stat when it did not.
    m_settings.sync();
    if (!m_settings.contains(qtKey(key))) {
        return std::nullopt;
    }
    return fromVariant(m_settings.value(qtKey(key)));
}

void QtSettingsStore::setValue(const std::string& key, const SettingValue& value) {
    if (!isUsable(key)) {
        return;
    }
    m_settings.setValue(qtKey(key), toVariant(value));
    m_settings.sync();
}

void QtSettingsStore::remove(const std::string& key) {
    if (!isUsable(key)) {
        return;
    }
    m_settings.remove(qtKey(key));
    m_settings.sync();
}

} // namespace quorvane
