// Recording stand-ins for the desktop services: application, pasteboard, workspace, the key alert and
// notifications.
#pragma once

#include "platform/Alert.h"
#include "platform/Application.h"
#include "platform/Notifier.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"

#include <deque>
#include <string>
#include <vector>

namespace quorvane {

// One log for all five, so tests can check the order across services.
class RecordingDesktop : public Application,
                         public Pasteboard,
                         public Workspace,
                         public Alert,
                         public Notifier {
public:
    void setAccessoryPolicy() override { m_log.push_back("accessory policy"); }
    void activateIgnoringOtherApps() override { m_log.push_back("activate"); }
    void terminate() override { m_log.push_back("terminate"); }

    void clearContents() override {
        m_log.push_back("clear pasteboard");
        m_pasteboard.clear();
    }
    void writeString(const std::string& text) override {
        m_log.push_back("write pasteboard");
        m_pasteboard += text;
    }

    void openUrl(const std::string& url) override { m_log.push_back("open " + url); }

    void notify(const Notification& notification) override {
        m_log.push_back("notify");
        m_notifications.push_back(notification);
    }

    AlertResponse runModal(const AlertRequest& request) override {
        m_log.push_back("alert");
        m_alerts.push_back(request);
        if (m_answers.empty()) {
            return AlertResponse{kAlertFirstButtonReturn + 1, {}};
        }
        AlertResponse answer = m_answers.front();
        m_answers.pop_front();
        return answer;
    }

    void answerAlert(int button, std::string fieldText) {
        m_answers.push_back({button, std::move(fieldText)});
    }

    const std::vector<std::string>& log() const { return m_log; }
    const std::string& pasteboard() const { return m_pasteboard; }
    const std::vector<AlertRequest>& alerts() const { return m_alerts; }
    const std::vector<Notification>& notifications() const { return m_notifications; }

private:
    std::vector<std::string> m_log;
    std::string m_pasteboard;
    std::deque<AlertResponse> m_answers;
    std::vector<AlertRequest> m_alerts;
    std::vector<Notification> m_notifications;
};

} // namespace quorvane
