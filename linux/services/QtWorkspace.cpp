#include "services/QtWorkspace.h"

#include <QDesktopServices>
#include <QString>
#include <QUrl>

namespace quorvane {

void QtWorkspace::openUrl(const std::string& url) {
    QUrl address(QString::fromStdString(url), QUrl::StrictMode);
    if (!address.isValid() || address.scheme().isEmpty()) {
        return;
    }
    QDesktopServices::openUrl(address);
}

} // namespace quorvane
