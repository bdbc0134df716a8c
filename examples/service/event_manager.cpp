#include "examples/service/event_manager.h"

#include "examples/service/descriptions.h"
#include "pellum/system/date_time.h"
#include "types/api/event/event_description.h"
#include "types/api/event/event_filter_spec.h"
#include "zabro/api/invalid_state.h"

#include <algorithm>

namespace Example {

namespace {

using Morvane::Event::Event;
using Morvane::Event::EventFilterSpec;

bool Chooses(const EventFilterSpec& filter, const Event& event) {
    if (filter.PeekEventChainId() != nullptr && *filter.PeekEventChainId() != event.GetChainId()) {
        return false;
    }
    if (const auto* types = filter.PeekType(); types != nullptr) {
        const auto& wanted = types->GetElements();
        if (std::find(wanted.begin(), wanted.end(), event.GetType()) == wanted.end()) {
            return false;
        }
    }
    if (const auto* range = filter.PeekTimeRange(); range != nullptr) {
        const auto time = event.GetCreatedTime();
        if ((range->PeekBeginTime() != nullptr && time < *range->PeekBeginTime())
            || (range->PeekEndTime() != nullptr && *range->PeekEndTime() < time)) {
            return false;
        }
    }
    return true;
}

} // namespace

EventManager::EventManager(std::string id)
    : ServerObject(Morvane::gMorvaneEventEventManagerTypeInfo, std::move(id)) {}

std::int32_t EventManager::NewChain() {
    const std::lock_guard lock(m_mutex);
    return ++m_lastChain;
}

void EventManager::Add(Event& event, std::int32_t chain, const std::string& userName) {
    event.SetChainId(chain);
    event.SetUserName(userName);
    event.SetCreatedTime(Pellum::System::DateTime::Now());
    const std::lock_guard lock(m_mutex);
    event.SetKey(static_cast<std::int32_t>(m_events.size()) + 1);
    m_events.emplace_back(&event);
}

Pellum::Ref<EventList> EventManager::Find(const EventFilterSpec& filter) const {
    auto chosen = Pellum::MakeRef<EventList>();
    const std::lock_guard lock(m_mutex);
    for (const auto& event : m_events) {
        if (Chooses(filter, *event)) {
            chosen->Append(event.Get());
        }
    }
    return chosen->IsEmpty() ? nullptr : chosen;
}

Pellum::Ref<EventList> EventManager::FindChain(std::int32_t chain) const {
    const auto filter = Pellum::MakeRef<EventFilterSpec>();
    filter->SetEventChainId(Pellum::Optional<std::int32_t>(chain));
    return Find(*filter);
}

void EventManager::GetDescription(Pellum::Ref<Morvane::Event::EventDescription>& result) {
    result = Pellum::MakeRef<Morvane::Event::EventDescription>();
    result->SetEventInfo(Describe({{"morvane.event.UserLoginEvent", "A user has logged in"},
                                   {"morvane.event.TaskEvent", "A task has ended"}})
                             .Get());
    result->SetType(Describe({{"info", "Information"}, {"warning", "Warning"}, {"error", "Error"}}).Get());
}

std::int32_t EventManager::GetMaxCollector() {
    return 0;
}

void EventManager::CreateCollector(EventFilterSpec* /*filter*/, Pellum::Ref<Tavik::MoRef>& /*result*/) {
    throw Zabro::Fault::InvalidState::Exception(); // getMaxCollector says that there is room for none
}

void EventManager::QueryEvent(EventFilterSpec* filter, Pellum::Ref<EventList>& result) {
    result = Find(*filter);
}

} // namespace Example
