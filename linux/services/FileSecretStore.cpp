#include "services/FileSecretStore.h"

#include "services/SecretStatus.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <pwd.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quorvane {

namespace {

constexpr std::string_view kHeader = "quorvane-secrets 1\n";
// Far more than a few keys need; a larger file is not one this program wrote.
constexpr std::size_t kMaxFileSize = 1 << 20;
constexpr std::size_t kMaxLengthDigits = 7;
constexpr int kMaxCorruptNames = 100;

std::string folderOf(const std::string& path) {
    std::size_t slash = path.find_last_of('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

// One field: its length in decimal, a colon, the bytes, a comma.
void appendField(std::string& out, const std::string& field) {
    out += std::to_string(field.size());
    out += ':';
    out += field;
    out += ',';
}

bool readField(std::string_view& in, std::string& field) {
    std::size_t digits = 0;
    std::size_t length = 0;
    while (digits < in.size() && in[digits] >= '0' && in[digits] <= '9') {
        length = length * 10 + static_cast<std::size_t>(in[digits] - '0');
        ++digits;
        if (digits > kMaxLengthDigits) {
            return false;
        }
    }
    bool leadingZero = digits > 1 && in[0] == '0';
    if (digits == 0 || leadingZero || digits >= in.size() || in[digits] != ':') {
        return false;
    }
    in.remove_prefix(digits + 1);
    if (length >= in.size() || in[length] != ',') {
        return false;
    }
    field.assign(in.substr(0, length));
    in.remove_prefix(length + 1);
    return true;
}

bool writeAll(int fd, const std::string& bytes) {
    std::size_t written = 0;
    while (written < bytes.size()) {
        ssize_t n = ::write(fd, bytes.data() + written, bytes.size() - written);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n <= 0) {
            return false;
        }
        written += static_cast<std::size_t>(n);
    }
    return true;
}

// Makes a rename durable: without it a crash may bring the old name back.
void syncFolder(const std::string& folder) {
    int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

} // namespace

FileSecretStore::FileSecretStore(std::string filePath)
    : m_filePath(std::move(filePath)) {}

std::string FileSecretStore::defaultPath() {
    const char* configHome = std::getenv("XDG_CONFIG_HOME");
    std::string base;
    if (configHome != nullptr && configHome[0] == '/') {
        base = configHome;
    } else {
        const char* home = std::getenv("HOME");
        if (home == nullptr || home[0] == '\0') {
            // As the shell would: the account's home from the password database.
            const passwd* account = ::getpwuid(::getuid());
            home = account != nullptr && account->pw_dir != nullptr ? account->pw_dir : "";
        }
        base = std::string(home) + "/.config";
    }
    return base + "/quorvane/secrets";
}

SecretCopyResult FileSecretStore::copy(const std::string& service, const std::string& account) {
    std::vector<Item> items;
    Load loaded = load(items);
    if (loaded == Load::Failed) {
        return {kSecretStatusIO, std::nullopt};
    }
    for (Item& item : items) {
        if (item.service == service && item.account == account) {
            return {kSecretStatusSuccess, std::move(item.value)};
        }
    }
    return {kSecretStatusItemNotFound, std::nullopt};
}

std::int32_t FileSecretStore::add(const std::string& service, const std::string& account,
                                  const std::string& data) {
    std::vector<Item> items;
    Load loaded = load(items);
    if (loaded == Load::Failed) {
        return kSecretStatusIO;
    }
    if (loaded == Load::Corrupt) {
        if (std::int32_t moved = moveCorruptFileAside(); moved != kSecretStatusSuccess) {
            return moved;
        }
    }
    for (const Item& item : items) {
        if (item.service == service && item.account == account) {
            return kSecretStatusDuplicateItem;
        }
    }
    items.push_back({service, account, data});
    return save(items);
}

std::int32_t FileSecretStore::update(const std::string& service, const std::string& account,
                                     const std::string& data) {
    std::vector<Item> items;
    Load loaded = load(items);
    if (loaded == Load::Failed) {
        return kSecretStatusIO;
    }
    for (Item& item : items) {
        if (item.service == service && item.account == account) {
            item.value = data;
            return save(items);
        }
    }
    return kSecretStatusItemNotFound;
}

std::int32_t FileSecretStore::remove(const std::string& service, const std::string& account) {
    std::vector<Item> items;
    Load loaded = load(items);
    if (loaded == Load::Failed) {
        return kSecretStatusIO;
    }
    for (auto it = items.begin(); it != items.end(); ++it) {
        if (it->service == service && it->account == account) {
            items.erase(it);
            return save(items);
        }
    }
    return kSecretStatusItemNotFound;
}

FileSecretStore::Load FileSecretStore::load(std::vector<Item>& items) const {
    items.clear();
    // Non-blocking so that a FIFO planted under the name cannot stall the open.
    int fd = ::open(m_filePath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) {
        return (errno == ENOENT || errno == ENOTDIR) ? Load::Missing : Load::Failed;
    }
    struct stat info {};
    if (::fstat(fd, &info) != 0) {
        ::close(fd);
        return Load::Failed;
    }
    if (!S_ISREG(info.st_mode) || static_cast<std::size_t>(info.st_size) > kMaxFileSize) {
        ::close(fd);
        return Load::Corrupt;
    }

    std::string content;
    char buffer[8192];
    for (;;) {
        ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n < 0) {
            ::close(fd);
            return Load::Failed;
        }
        if (n == 0) {
            break;
        }
        content.append(buffer, static_cast<std::size_t>(n));
        if (content.size() > kMaxFileSize) {
            ::close(fd);
            return Load::Corrupt;
        }
    }
    ::close(fd);

    // An empty file holds no items and nothing that could be lost.
    if (content.empty()) {
        return Load::Read;
    }
    std::string_view in(content);
    if (in.substr(0, kHeader.size()) != kHeader) {
        return Load::Corrupt;
    }
    in.remove_prefix(kHeader.size());
    while (!in.empty()) {
        Item item;
        if (!readField(in, item.service) || !readField(in, item.account) || !readField(in, item.value) ||
            in.empty() || in.front() != '\n') {
            items.clear();
            return Load::Corrupt;
        }
        in.remove_prefix(1);
        for (const Item& earlier : items) {
            if (earlier.service == item.service && earlier.account == item.account) {
                items.clear();
                return Load::Corrupt;
            }
        }
        items.push_back(std::move(item));
    }
    return Load::Read;
}

std::int32_t FileSecretStore::save(const std::vector<Item>& items) const {
    if (!ensureFolder()) {
        return kSecretStatusIO;
    }
    std::string folder = folderOf(m_filePath);
    if (items.empty()) {
        if (::unlink(m_filePath.c_str()) != 0 && errno != ENOENT) {
            return kSecretStatusIO;
        }
        syncFolder(folder);
        return kSecretStatusSuccess;
    }

    std::string content(kHeader);
    for (const Item& item : items) {
        appendField(content, item.service);
        appendField(content, item.account);
        appendField(content, item.value);
        content += '\n';
    }

    // mkostemp creates the file with at most mode 0600, so the new items are
    // never readable by others, not even for a moment; the umask may take
    // more away, which fchmod gives back.
    std::string temporary = m_filePath + ".XXXXXX";
    int fd = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (fd < 0) {
        return kSecretStatusIO;
    }
    bool written = ::fchmod(fd, 0600) == 0 && writeAll(fd, content) && ::fsync(fd) == 0;
    written = (::close(fd) == 0) && written;
    if (!written || ::rename(temporary.c_str(), m_filePath.c_str()) != 0) {
        ::unlink(temporary.c_str());
        return kSecretStatusIO;
    }
    syncFolder(folder);
    return kSecretStatusSuccess;
}

std::int32_t FileSecretStore::moveCorruptFileAside() const {
    for (int attempt = 1; attempt <= kMaxCorruptNames; ++attempt) {
        std::string aside = m_filePath + ".corrupt";
        if (attempt > 1) {
            // Appended in two steps: g++ 12 at -O2 misreads "." + a temporary as an overlapping copy.
            aside += '.';
            aside += std::to_string(attempt);
        }
        // Never over an earlier copy: each may hold a key worth recovering.
        if (::renameat2(AT_FDCWD, m_filePath.c_str(), AT_FDCWD, aside.c_str(), RENAME_NOREPLACE) == 0) {
            syncFolder(folderOf(m_filePath));
            return kSecretStatusSuccess;
        }
        if (errno != EEXIST) {
            return kSecretStatusIO;
        }
    }
    return kSecretStatusIO;
}

bool FileSecretStore::ensureFolder() const {
    std::string folder = folderOf(m_filePath);
    // Creates each missing folder from the top down; folders that exist keep
    // their modes, since they may be shared ones such as ~/.config.
    for (std::size_t end = 1; end <= folder.size(); ++end) {
        if (end != folder.size() && folder[end] != '/') {
            continue;
        }
        std::string prefix = folder.substr(0, end);
        if (::mkdir(prefix.c_str(), 0700) == 0) {
            // mkdir's mode passes through the umask; a folder of ours is
            // always exactly 0700.
            ::chmod(prefix.c_str(), 0700);
        } else if (errno != EEXIST) {
            return false;
        }
    }
    struct stat info {};
    return ::stat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

} // namespace quorvane
