#pragma once

#include "tavik/managed/server_object.h"
#include "types/api/event/event.h"
#include "types/api/event/event_manager.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace Example {

using EventList = Tavik::DataArray<Morvane::Event::Event>;

/// Keeps the events of the service, in the order in which they happened.
class EventManager final : public Morvane::Event::EventManager, public Tavik::ServerObject {
public:
    explicit EventManager(std::string id);

    /// Starts a chain: a number for events that belong together.
    std::int32_t NewChain();

    /// Makes an event of class `T`, lets `fill` set what only that class has, and records it.
    template <class T, class Fill>
    void Record(std::int32_t chain, const std::string& userName, Fill fill) {
        const auto event = Pellum::MakeRef<T>();
        fill(*event);
        Add(*event, chain, userName);
    }

    template <class T>
    void Record(std::int32_t chain, const std::string& userName) {
        Record<T>(chain, userName, [](T&) {});
    }

    /// What the filter chooses; null for nothing.
    Pellum::Ref<EventList> Find(const Morvane::Event::EventFilterSpec& filter) const;
    /// The events of a chain; null for none.
    Pellum::Ref<EventList> FindChain(std::int32_t chain) const;

    void GetDescription(Pellum::Ref<Morvane::Event::EventDescription>& result) override;
    std::int32_t GetMaxCollector() override;
    void CreateCollector(Morvane::Event::EventFilterSpec* filter, Pellum::Ref<Tavik::MoRef>& result) override;
    void QueryEvent(Morvane::Event::EventFilterSpec* filter, Pellum::Ref<EventList>& result) override;

private:
    void Add(Morvane::Event::Event& event, std::int32_t chain, const std::string& userName);

    mutable std::mutex m_mutex;
    std::vector<Pellum::Ref<Morvane::Event::Event>> m_events; ///< never changed once they are here
    std::int32_t m_lastChain = 0;
};

} // namespace Example
