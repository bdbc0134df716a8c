#include "bench/table/sections.h"

#include "bench/names.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <utility>

namespace Bench {

namespace {

struct SectionForm {
    const char* title;
    const char* note;
    std::vector<std::string> prefixes; ///< of the operations, in their order
};

const std::vector<SectionForm>& GetForms() {
    static const std::vector<SectionForm> forms{
        {"Values",
         "Creating, cloning and decoding include destroying. Speeds go by the length of our compact JSON. "
         "Plain: "
         "the text is copied with memcpy.",
         {kCreate, kClone, kEquality, kLateInequality, kDifference, kEncode, kDecode, kEncodeBinary,
          kDecodeBinary}},
        {"Fields and names",
         "Plain: the accessor of the class, as a call beside the record, or a std::unordered_map of the same "
         "names.",
         {kFieldPointer, kFieldRecord, kFieldGet, kFindType, kFindWireType, kFindProperty}},
        {"The library",
         "Cold start: until all types are there (ours), until the library is loaded (the peer). Memory: by "
         "how "
         "much the peak rises, which the system counts in steps of some 0.3 MB. Plain: the text is copied "
         "with memcpy.",
         {kColdStart, kLoad, kStrippedSize, kLoadedSize, kMemoryKept, kMemoryInTurn}},
        {"Growth", "Time for each event of an array: ours is that of 10,000.", {kGrowth}},
        {"Threads", "Throughput: ours is that of two threads, which work on the same value.", {kTwoThreads}},
        {"Calls", "Of a small method, through the adapter within the process.", {kCalls}},
        {"Others", "", {""}},
    };
    return forms;
}

/// Position of `item`, or the end for one that is not there.
template <class List, class Item>
std::size_t Position(const List& list, const Item& item) {
    return static_cast<std::size_t>(std::find(std::begin(list), std::end(list), item) - std::begin(list));
}

std::size_t WorkloadOrder(const std::string& workload) {
    static const std::vector<std::string> known{
        "conversion_request", "linux_machine", "events", "connection_request"};
    return Position(known, workload);
}

std::size_t PartyOrder(const std::string& party) {
    static const std::vector<std::string> known{kOurs, kProtobuf, kRapidJson, kSimdjson, kNlohmann, kPlain};
    return Position(known, party);
}

/// Where an operation belongs: the section, and the place in it. An exact name comes before those that begin
/// with another.
std::pair<std::size_t, std::size_t> Place(const std::string& operation) {
    const auto& forms = GetForms();
    for (std::size_t section = 0; section < forms.size(); ++section) {
        const auto& prefixes = forms[section].prefixes;
        if (const std::size_t place = Position(prefixes, operation); place < prefixes.size()) {
            return {section, place};
        }
    }
    for (std::size_t section = 0; section < forms.size(); ++section) {
        const std::string& prefix = forms[section].prefixes.back();
        // "growth: clone" stands where "clone" stands.
        if ((prefix.empty() || prefix.ends_with(": ")) && operation.starts_with(prefix)) {
            return {section, Position(forms.front().prefixes, operation.substr(prefix.size()))};
        }
    }
    return {forms.size() - 1, 0};
}

void AddMeasurement(Section& section, const Measurement& measurement) {
    auto row = std::find_if(section.rows.begin(), section.rows.end(), [&](const Row& other) {
        return other.operation == measurement.operation && other.workload == measurement.workload;
    });
    if (row == section.rows.end()) {
        row = section.rows.insert(row, {measurement.operation, measurement.workload, measurement.unit, {}});
    }
    row->values[measurement.party].push_back(measurement.value);
    if (Position(section.parties, measurement.party) == section.parties.size()) {
        section.parties.push_back(measurement.party);
    }
}

void Order(Section& section) {
    const auto rowKey = [](const Row& row) {
        return std::tuple(
            Place(row.operation).second, row.operation.size(), row.operation, WorkloadOrder(row.workload),
            row.workload);
    };
    std::sort(section.rows.begin(), section.rows.end(), [&](const Row& a, const Row& b) {
        return rowKey(a) < rowKey(b);
    });
    const auto partyKey = [](const std::string& party) { return std::pair(PartyOrder(party), party); };
    std::sort(section.parties.begin(), section.parties.end(), [&](const auto& a, const auto& b) {
        return partyKey(a) < partyKey(b);
    });
}

} // namespace

std::optional<double> Row::Find(const std::string& party) const {
    const auto found = values.find(party);
    return found == values.end() ? std::nullopt : std::optional(Median(found->second));
}

double Median(std::vector<double> numbers) {
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::nth_element(numbers.begin(), middle, numbers.end());
    return *middle;
}

std::vector<Section> MakeSections(const std::vector<Measurement>& measurements) {
    std::vector<Section> sections;
    for (const SectionForm& form : GetForms()) {
        sections.push_back({form.title, form.note, {}, {}});
    }
    for (const Measurement& measurement : measurements) {
        AddMeasurement(sections[Place(measurement.operation).first], measurement);
    }
    std::erase_if(sections, [](const Section& section) { return section.rows.empty(); });
    std::for_each(sections.begin(), sections.end(), Order);
    return sections;
}

} // namespace Bench
