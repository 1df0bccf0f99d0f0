#include "platform/QtSettingsStore.h"

#include "platform/Defaults.h"

#include <QDir>
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
class RestartedStore {
public:
    explicit RestartedStore(const QString& path) {
        m_linkPath = path + QStringLiteral(".restart") + QString::number(++s_restarts);
        m_linked =
            ::link(QFile::encodeName(path).constData(), QFile::encodeName(m_linkPath).constData()) == 0;
        m_store = std::make_unique<QtSettingsStore>(m_linkPath);
    }
    bool linked() const { return m_linked; }
    QtSettingsStore& operator*() { return *m_store; }
    QtSettingsStore* operator->() { return m_store.get(); }

private:
    static inline int s_restarts = 0;
    QString m_linkPath;
    bool m_linked = false;
    std::unique_ptr<QtSettingsStore> m_store;
};

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

TEST_F(QtSettingsStoreTest, ValuesKeepTheirTypesWithinOneRun) {
    QtSettingsStore store(path());
    const std::pair<std::string, SettingValue> values[] = {
        {"autoRefreshEnabled", SettingValue(false)},
        {"refreshInterval", SettingValue(std::int64_t{900})},
        {"min", SettingValue(std::numeric_limits<std::int64_t>::min())},
        {"interval", SettingValue(30.7)},
        {"dayKey", SettingValue(std::string("2026-11-22"))},
        {"emoji", SettingValue(std::string("🐋 \"quoted\", comma; =sign\nnext line"))},
        {"balanceHistory", SettingValue(SettingBytes{allBytes()})},
    };
    for (const auto& [key, value] : values) {
        store.setValue(key, value);
    }
    for (const auto& [key, value] : values) {
        EXPECT_EQ(store.value(key), std::optional<SettingValue>(value)) << key;
    }
}

TEST_F(QtSettingsStoreTest, AfterARestartScalarsReadBackAsTextAndBytesAsBytes) {
    {
        QtSettingsStore store(path());
        store.setValue("on", true);
        store.setValue("off", false);
        store.setValue("refreshInterval", std::int64_t{45});
        store.setValue("max", std::numeric_limits<std::int64_t>::max());
        store.setValue("interval", 30.7);
        store.setValue("third", 1.0 / 3.0);
        store.setValue("nan", std::nan(""));
        store.setValue("inf", std::numeric_limits<double>::infinity());
        store.setValue("dayStart.USD", std::string("12.34"));
        store.setValue("padded", std::string("  two blanks before, one after "));
        store.setValue("lines", std::string("a\nb\r\n\tc \\ \"d\" ; # e"));
        store.setValue("lookalike", std::string("@ByteArray(not bytes)"));
        store.setValue("empty", std::string());
        store.setValue("balanceHistory", SettingBytes{allBytes()});
        store.setValue("noBytes", SettingBytes{});
    }
    RestartedStore store(path());
    ASSERT_TRUE(store.linked());

    const std::pair<std::string, SettingValue> expected[] = {
        {"on", std::string("true")},
        {"off", std::string("false")},
        {"refreshInterval", std::string("45")},
        {"max", std::string("9223372036854775807")},
        {"interval", std::string("30.7")},
        {"third", std::string("0.3333333333333333")},
        {"nan", std::string("nan")},
        {"inf", std::string("inf")},
        {"dayStart.USD", std::string("12.34")},
        {"padded", std::string("  two blanks before, one after ")},
        {"lines", std::string("a\nb\r\n\tc \\ \"d\" ; # e")},
        {"lookalike", std::string("@ByteArray(not bytes)")},
        {"empty", std::string()},
        {"balanceHistory", SettingBytes{allBytes()}},
        {"noBytes", SettingBytes{}},
    };
    for (const auto& [key, value] : expected) {
        EXPECT_EQ(store->value(key), std::optional<SettingValue>(value)) << key;
    }

    // The program reads them through Defaults, which makes the same values
    // of the text as of the typed originals.
    Defaults defaults(*store);
    EXPECT_TRUE(defaults.boolValue("on"));
    EXPECT_FALSE(defaults.boolValue("off"));
    EXPECT_TRUE(defaults.hasValue("off"));
    EXPECT_EQ(defaults.doubleValue("refreshInterval"), 45.0);
    EXPECT_EQ(defaults.doubleValue("interval"), 30.7);
    EXPECT_TRUE(std::isnan(defaults.doubleValue("nan")));
    EXPECT_EQ(defaults.doubleValue("inf"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(defaults.stringValue("dayStart.USD"), "12.34");
    EXPECT_EQ(defaults.dataValue("balanceHistory"), allBytes());
}

TEST_F(QtSettingsStoreTest, AbsenceIsDistinctFromFalseZeroAndEmpty) {
    QtSettingsStore store(path());
    store.setValue("false", false);
    store.setValue("zero", std::int64_t{0});
    store.setValue("empty", std::string());
    EXPECT_EQ(store.value("missing"), std::nullopt);

    RestartedStore restarted(path());
    EXPECT_EQ(restarted->value("missing"), std::nullopt);
    EXPECT_EQ(restarted->value("false"), std::optional<SettingValue>(std::string("false")));
    EXPECT_EQ(restarted->value("zero"), std::optional<SettingValue>(std::string("0")));
    EXPECT_EQ(restarted->value("empty"), std::optional<SettingValue>(std::string()));
}

TEST_F(QtSettingsStoreTest, EveryChangeIsOnDiskWhenTheCallReturns) {
    QtSettingsStore store(path());
    store.setValue("refreshInterval", std::int64_t{300});
    {
        RestartedStore other(path());
        EXPECT_EQ(other->value("refreshInterval"), std::optional<SettingValue>(std::string("300")));
    }
    store.setValue("refreshInterval", std::int64_t{900});
    store.setValue("dayKey", std::string("2026-11-22"));
    store.remove("dayKey");
    RestartedStore other(path());
    EXPECT_EQ(other->value("refreshInterval"), std::optional<SettingValue>(std::string("900")));
    EXPECT_EQ(other->value("dayKey"), std::nullopt);
}

TEST_F(QtSettingsStoreTest, KeysThatWouldNameTheWholeFileTouchNothing) {
    QtSettingsStore store(path());
    store.setValue("autoRefreshEnabled", true);
    for (const std::string key : {"", "/", "//"}) {
        store.setValue(key, std::string("x"));
        store.remove(key);
        EXPECT_EQ(store.value(key), std::nullopt) << key;
    }
    RestartedStore restarted(path());
    EXPECT_EQ(restarted->value("autoRefreshEnabled"), std::optional<SettingValue>(std::string("true")));
}

TEST_F(QtSettingsStoreTest, KeysWithSlashesDotsAndOtherScriptsRoundTrip) {
    const std::string keys[] = {"dayStart.USD", "firstStart.€", "dayStart.a/b", "firstStart.日本円", "x y"};
    {
        QtSettingsStore store(path());
        for (const std::string& key : keys) {
            store.setValue(key, std::string("v:") + key);
        }
    }
    RestartedStore restarted(path());
    for (const std::string& key : keys) {
        EXPECT_EQ(restarted->value(key), std::optional<SettingValue>(std::string("v:") + key)) << key;
    }
}

TEST_F(QtSettingsStoreTest, HandEditedAndDamagedFilesReadWithoutCrashing) {
    struct Case {
        QByteArray content;
        std::string key;
        std::optional<SettingValue> expected;
    };
    const Case cases[] = {
        // Unquoted commas make a list in QSettings; it reads back as the typed text.
        {"[General]\nrefreshInterval=30, 60\n", "refreshInterval", std::string("30, 60")},
        {"[General]\nautoRefreshEnabled=yes\n", "autoRefreshEnabled", std::string("yes")},
        {"[General]\nbalanceHistory=@ByteArray(\\x0\\xff)\n", "balanceHistory",
         SettingBytes{std::string("\0\xff", 2)}},
        {"[General]\nrefreshInterval=@Invalid()\n", "refreshInterval", std::nullopt},
        {"[General\nrefreshInterval\n=\n", "refreshInterval", std::nullopt},
        {QByteArray("\x00\xff\xfe garbage \x01\n", 14), "refreshInterval", std::nullopt},
    };
    for (const Case& c : cases) {
        QString file = m_folder.filePath(QStringLiteral("edited.conf"));
        QFile::remove(file);
        {
            QFile out(file);
            ASSERT_TRUE(out.open(QIODevice::WriteOnly));
            out.write(c.content);
        }
        RestartedStore store(file);
        EXPECT_EQ(store->value(c.key), c.expected) << c.content.toStdString();
    }
}

TEST_F(QtSettingsStoreTest, TheDefaultFileIsQuorvaneConfUnderTheUsersConfigFolder) {
    QString configHome = qEnvironmentVariable("XDG_CONFIG_HOME");
    ASSERT_FALSE(configHome.isEmpty());
    QString expected = QDir(configHome).filePath(QStringLiteral("Quorvane/Quorvane.conf"));
    QFile::remove(expected);
    {
        QtSettingsStore store;
        EXPECT_EQ(store.fileName().toStdString(), expected.toStdString());
        store.setValue("autoRefreshEnabled", false);
    }
    QFile written(expected);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), "[General]\nautoRefreshEnabled=false\n");
}

} // namespace
} // namespace quorvane
