// What a device reported, report by report.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <vector>

namespace replay {

// A finger on the device. Slot and tracking id together stay the same from its landing to its lift.
struct Contact {
    std::int32_t slot = 0;
    std::int32_t trackingId = 0;  // 0 or more
    std::int32_t x = 0;           // device units, from the left
    std::int32_t y = 0;           // device units, from the top

    friend bool operator==(const Contact&, const Contact&) = default;
};

// What the device reported at one moment: the fingers that are down then, by ascending slot.
struct Report {
    std::int64_t timeUs = 0;  // microseconds since the first report
    std::vector<Contact> contacts;

    friend bool operator==(const Report&, const Report&) = default;
};

// Reports in the order of their times, also those that changed nothing. Kept is what each of them changed, so that
// fingers that rest take no memory.
class ReportList {
public:
    // Goes through the reports once. Valid as long as the list, and nothing is added to it.
    class Iterator {
    public:
        explicit Iterator(const ReportList& list) : m_list(&list) { Apply(); }
        const Report& operator*() const noexcept { return m_report; }
        const Report* operator->() const noexcept { return &m_report; }
        Iterator& operator++();
        friend bool operator==(const Iterator& a, std::default_sentinel_t /*end*/) {
            return a.m_index == a.m_list->GetCount();
        }

    private:
        void Apply();

        const ReportList* m_list;
        std::size_t m_index = 0;
        std::size_t m_nextChange = 0;
        Report m_report;
    };

    ReportList() = default;
    explicit ReportList(const std::vector<Report>& reports);

    void Add(const Report& report);

    [[nodiscard]] std::size_t GetCount() const noexcept { return m_steps.size(); }
    // The latest report; without fingers at time 0 for an empty list.
    [[nodiscard]] const Report& GetLast() const noexcept { return m_last; }
    [[nodiscard]] Iterator begin() const { return Iterator(*this); }
    [[nodiscard]] std::default_sentinel_t end() const noexcept { return {}; }

private:
    struct Step {
        std::int64_t timeUs;
        std::size_t changesEnd;  // how many changes there are up to here
    };

    std::vector<Step> m_steps;
    std::vector<Contact> m_changes;  // contacts that are new or different; for a lift one with the id -1
    Report m_last;
};

}  // namespace replay
