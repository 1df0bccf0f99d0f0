#include "services/QtSettingsStore.h"

#include "platform/Defaults.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>

namespace quorvane {
namespace {

// QSettings keeps the parsed contents of every file it opened for the life of
// the process, keyed by path: a second instance under the same path sees the
// values as they were written, typed, and not as the next launch reads them.
// A second name for the same file (a hard link) is parsed afresh from disk.
std::unique_ptr<QtSettingsStore> restarted(const QString& path) {
    static int restarts = 0;
    QString link = path + QStringLiteral(".restart") + QString::number(++restarts);
    EXPECT_EQ(::link(QFile::encodeName(path).constData(), QFile::encodeName(link).constData()), 0);
    return std::make_unique<QtSettingsStore>(link);
}

std::string allBytes() {
    std::string bytes;
    for (int b = 0; b < 256; ++b) {
        bytes.push_back(static_cast<char>(b));
    }
    return bytes;
}

class QtSettingsStoreTest : public ::testing::Test {
protected:
    QString path() const { return m_folder.filePath(QStringLiteral("Quorvane.conf")); }

    QTemporaryDir m_folder;
};

TEST_F(QtSettingsStoreTest, ValuesKeepTheirTypesInOneRunAndReadBackAsTextOrBytesAfterARestart) {
    const std::string text = "  \xF0\x9F\x90\x8B a\nb\r\n\tc \\ \"d\", e ; # =f ";
    struct Case {
        std::string key;
        SettingValue written;
        SettingValue restarted;
    };
    const Case cases[] = {
        {"on", true, std::string("true")},
        {"off", false, std::string("false")},
        {"refreshInterval", std::int64_t{45}, std::string("45")},
        {"max", std::numeric_limits<std::int64_t>::max(), std::string("9223372036854775807")},
        {"interval", 30.7, std::string("30.7")},
        {"third", 1.0 / 3.0, std::string("0.3333333333333333")},
        {"nan", std::nan(""), std::string("nan")},
        {"inf", std::numeric_limits<double>::infinity(), std::string("inf")},
        {"dayStart.USD", std::string("12.34"), std::string("12.34")},
        {"firstStart.\xE6\x97\xA5\xE6\x9C\xAC/x y", text, text},
        {"lookalike", std::string("@ByteArray(not bytes)"), std::string("@ByteArray(not bytes)")},
        {"empty", std::string(), std::string()},
        {"balanceHistory", SettingBytes{allBytes()}, SettingBytes{allBytes()}},
        {"noBytes", SettingBytes{}, SettingBytes{}},
    };
    {
        QtSettingsStore store(path());
        for (const Case& c : cases) {
            store.setValue(c.key, c.written);
        }
        for (const Case& c : cases) {
            if (c.key != "nan") {
                EXPECT_EQ(store.value(c.key), std::optional<SettingValue>(c.written)) << c.key;
            }
        }
    }
    auto store = restarted(path());
    for (const Case& c : cases) {
        EXPECT_EQ(store->value(c.key), std::optional<SettingValue>(c.restarted)) << c.key;
    }
    EXPECT_EQ(store->value("missing"), std::nullopt);

    // The program reads them through Defaults, which makes the same values
    // of the text as of the typed originals.
    Defaults defaults(*store);
    EXPECT_TRUE(defaults.boolValue("on"));
    EXPECT_FALSE(defaults.boolValue("off"));
    EXPECT_TRUE(defaults.hasValue("off"));
    EXPECT_FALSE(defaults.hasValue("missing"));
    EXPECT_EQ(defaults.doubleValue("refreshInterval"), 45.0);
    EXPECT_EQ(defaults.doubleValue("interval"), 30.7);
    EXPECT_TRUE(std::isnan(defaults.doubleValue("nan")));
    EXPECT_EQ(defaults.doubleValue("inf"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(defaults.stringValue("dayStart.USD"), "12.34");
    EXPECT_EQ(defaults.dataValue("balanceHistory"), allBytes());
}

TEST_F(QtSettingsStoreTest, EveryChangeIsOnDiskWhenTheCallReturnsAndNoKeyNamesTheWholeFile) {
    QtSettingsStore store(path());
    store.setValue("refreshInterval", std::int64_t{300});
    EXPECT_EQ(restarted(path())->value("refreshInterval"), std::optional<SettingValue>(std::string("300")));
    store.setValue("refreshInterval", std::int64_t{900});
    store.setValue("dayKey", std::string("2026-11-22"));
    store.remove("dayKey");
    for (const std::string key : {"", "/", "//"}) {
        store.setValue(key, std::string("x"));
        store.remove(key);
        EXPECT_EQ(store.value(key), std::nullopt) << key;
    }
    auto other = restarted(path());
    EXPECT_EQ(other->value("refreshInterval"), std::optional<SettingValue>(std::string("900")));
    EXPECT_EQ(other->value("dayKey"), std::nullopt);
}

TEST_F(QtSettingsStoreTest, HandEditedAndDamagedFilesReadWithoutCrashing) {
    const std::pair<QByteArray, std::optional<SettingValue>> cases[] = {
        // Unquoted commas make a list in QSettings; it reads back as the typed text.
        {"[General]\nrefreshInterval=30, 60\n", std::string("30, 60")},
        {"[General]\nrefreshInterval=@ByteArray(\\x0\\xff)\n", SettingBytes{std::string("\0\xff", 2)}},
        {"[General]\nrefreshInterval=@Invalid()\n", std::nullopt},
        {QByteArray("[General\nrefreshInterval\n=\n\x00\xff\xfe\x01\n", 32), std::nullopt},
    };
    for (const auto& [content, expected] : cases) {
        QString file = m_folder.filePath(QStringLiteral("edited.conf"));
        QFile::remove(file);
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(content);
        out.close();
        EXPECT_EQ(restarted(file)->value("refreshInterval"), expected) << content.toStdString();
    }
}

} // namespace
} // namespace quorvane
