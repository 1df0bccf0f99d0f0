// Gives each item of the host's menu the same dbusmenu id for as long as it is the same item.
#pragma once

#include <string>
#include <unordered_map>

namespace quorvane {

// The menu is built whole on every change, yet hosts keep what they drew by
// id: an id that stays with its item lets a rebuild that only changes texts
// reach the host as changed properties, and spares it rebuilding its whole
// menu (Plasma then sizes a submenu anew and may run it off the screen). An
// item is known by its place in the tree and what it does (its key), so a
// click sent just before a rebuild still lands on the same command. An id
// once given is never given to another key.
class DBusMenuIds {
public:
    static constexpr int kRootId = 0;

    // The id of the item with this key, handed out on first asking.
    int idFor(const std::string& key) {
        const auto [found, added] = m_ids.try_emplace(key, m_next);
        if (added) {
            ++m_next;
        }
        return found->second;
    }
    // How many keys have been given an id.
    std::size_t size() const { return m_ids.size(); }

private:
    std::unordered_map<std::string, int> m_ids;
    int m_next = kRootId + 1;
};

} // namespace quorvane
