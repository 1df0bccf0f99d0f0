#include "main/StateBackend.h"

#include "balance/BalanceRequest.h"
#include "services/QtSettingsStore.h"
#include "services/SecretStoreSelector.h"

#include <QString>
#include <QUrl>

namespace quorvane {

std::optional<std::string> StateBackend::apiBaseUrlFromEnvironment(std::string& error) {
    const QString value = qEnvironmentVariable(kApiBaseUrlVariable.data());
    if (value.isEmpty()) {
        return std::nullopt;
    }
    const QUrl url(value, QUrl::StrictMode);
    const bool usable = url.isValid() && (url.scheme() == "http" || url.scheme() == "https") &&
                        !url.host().isEmpty() && !url.hasQuery() && !url.hasFragment() &&
                        url.userInfo().isEmpty();
    if (!usable) {
        // The value itself is not repeated: it may name a private server.
        error = std::string(kApiBaseUrlVariable) +
                " is not an http:// or https:// address of a server; unset it to use the DeepSeek API";
        return std::nullopt;
    }
    return value.toStdString();
}

std::unique_ptr<StateBackend> StateBackend::forUser(std::ostream& announcements, std::string& error) {
    const std::optional<std::string> address = apiBaseUrlFromEnvironment(error);
    if (!error.empty()) {
        return nullptr;
    }
    std::unique_ptr<StateBackend> backend(new StateBackend());
    backend->m_apiBaseUrl = address.value_or(std::string(BalanceRequest::kDefaultApiBaseUrl));
    backend->m_userSettings = std::make_unique<QtSettingsStore>();
    SecretStoreSelector selector(announcements);
    backend->m_userSecrets = selector.select();
    return backend;
}

std::unique_ptr<StateBackend> StateBackend::forDemo(const Clock& clock, const Formatter& formatter,
                                                    std::string& error) {
    std::unique_ptr<StateBackend> backend(new StateBackend());
    backend->m_demo = std::make_unique<DemoEnvironment>(clock, formatter);
    if (!backend->m_demo->start()) {
        error = "the demo's server could not listen on 127.0.0.1";
        return nullptr;
    }
    backend->m_apiBaseUrl = backend->m_demo->apiBaseUrl();
    return backend;
}

SessionStores StateBackend::stores() {
    if (m_demo) {
        DemoEnvironment* demo = m_demo.get();
        return SessionStores{demo->settings(), demo->secrets(), m_apiBaseUrl, [demo] {
                                 demo->seedBaselines();
                             }};
    }
    return SessionStores{*m_userSettings, *m_userSecrets, m_apiBaseUrl, {}};
}

} // namespace quorvane
