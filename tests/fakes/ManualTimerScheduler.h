// A timer scheduler whose timers fire only when the test says so.
#pragma once

#include "platform/RepeatingTimer.h"

#include <memory>
#include <vector>

namespace quorvane {

class ManualTimerScheduler : public TimerScheduler {
public:
    struct Entry {
        double period = 0.0;
        std::function<void()> onFire;
        bool active = true;
    };

    std::unique_ptr<RepeatingTimer> scheduleRepeating(double periodSeconds,
                                                      std::function<void()> onFire) override {
        auto entry = std::make_shared<Entry>(Entry{periodSeconds, std::move(onFire), true});
        m_entries.push_back(entry);
        return std::make_unique<Timer>(entry);
    }

    std::size_t activeCount() const {
        std::size_t count = 0;
        for (const auto& entry : m_entries) {
            count += entry->active ? 1 : 0;
        }
        return count;
    }
    std::size_t createdCount() const { return m_entries.size(); }
    // The period of the one active timer; fails the test's expectation when there is not exactly one.
    double activePeriod() const {
        for (const auto& entry : m_entries) {
            if (entry->active) {
                return entry->period;
            }
        }
        return -1.0;
    }
    // Fires every active timer once.
    void fireActive() {
        auto entries = m_entries;
        for (const auto& entry : entries) {
            if (entry->active) {
                entry->onFire();
            }
        }
    }

private:
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

    std::vector<std::shared_ptr<Entry>> m_entries;
};

} // namespace quorvane
