// A timer scheduler whose timers fire only when the test says so.
#pragma once

#include "platform/RepeatingTimer.h"

#include <memory>
#include <vector>

namespace quorvane {

class ManualTimerScheduler : public TimerScheduler {
public:
    std::unique_ptr<RepeatingTimer> scheduleRepeating(double periodSeconds,
                                                      std::function<void()> onFire) override {
        m_entries.push_back(std::make_shared<Entry>(Entry{periodSeconds, std::move(onFire), true}));
        return std::make_unique<Timer>(m_entries.back());
    }

    std::size_t createdCount() const { return m_entries.size(); }
    std::size_t activeCount() const { return active().size(); }
    // The period of the first active timer, or -1 when none is.
    double activePeriod() const { return active().empty() ? -1.0 : active().front()->period; }
    // Fires every active timer once.
    void fireActive() {
        for (const auto& entry : active()) {
            if (entry->active) {
                entry->onFire();
            }
        }
    }

private:
    struct Entry {
        double period;
        std::function<void()> onFire;
        bool active;
    };

    class Timer : public RepeatingTimer {
    public:
        explicit Timer(std::shared_ptr<Entry> entry)
            : m_entry(std::move(entry)) {}
        ~Timer() override { m_entry->active = false; }
        void invalidate() override { m_entry->active = false; }
        double periodSeconds() const override { return m_entry->period; }

    private:
        std::shared_ptr<Entry> m_entry;
    };

    std::vector<std::shared_ptr<Entry>> active() const {
        std::vector<std::shared_ptr<Entry>> result;
        for (const auto& entry : m_entries) {
            if (entry->active) {
                result.push_back(entry);
            }
        }
        return result;
    }

    std::vector<std::shared_ptr<Entry>> m_entries;
};

} // namespace quorvane
