#include "services/LinuxServices.h"

namespace quorvane {

LinuxServices::LinuxServices()
    : m_formatter(IcuFormatter::defaultLocaleId()) {}

Platform LinuxServices::platform(const SessionStores& stores, const PlatformFaces& faces) {
    return Platform{faces.statusItem, stores.settings,   stores.secrets, m_http,      m_clock,
                    m_formatter,      m_segmenter,       m_timers,       faces.alert, faces.pasteboard,
                    faces.workspace,  faces.application, faces.notifier};
}

} // namespace quorvane
