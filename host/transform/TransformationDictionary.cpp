// The derived fields of a model, computed into a record of the calling thread.
#include "host/transform/TransformationDictionary.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "host/ThreadKept.h"
#include "host/transform/DerivedRecord.h"

namespace KwBrevix_930 {

namespace {

std::uint64_t NextSerialNumber() {
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

// The record that a thread used last.
struct RecordCache {
    std::uint64_t owner = 0;
    DerivedRecord* record = nullptr;
};

// Frees the record where the thread ends.
struct ThreadCache : RecordCache {
    ~ThreadCache() { delete record; }
};

// What ends later than that in its thread may still derive; its record stays.
constinit thread_local RecordCache lateCache;

RecordCache& CacheOfThread() {
    ThreadCache* cache = ThreadKept<ThreadCache>::Get();
    return cache ? *cache : lateCache;
}

}  // namespace

TransformationDictionary::TransformationDictionary() : fSerialNumber(NextSerialNumber()) {}
TransformationDictionary::~TransformationDictionary() = default;

bool TransformationDictionary::AddVar(std::unique_ptr<TransformVar> variable) {
    const std::size_t place = fVars.size();
    if (!fPlaceByName.emplace(variable->GetName(), place).second)
        return false;
    variable->SetSlot(fSlots.size());
    fSlots.push_back({false, place});
    fOrder.push_back(place);
    fVars.push_back(std::move(variable));
    fSerialNumber = NextSerialNumber();
    return true;
}

std::size_t TransformationDictionary::AddRawField(const std::string& name) {
    const auto [found, isNew] = fRawPlaceByName.emplace(name, fRawFields.size());
    if (isNew) {
        fRawFields.push_back({name, fSlots.size()});
        fSlots.push_back({true, found->second});
        fSerialNumber = NextSerialNumber();
    }
    return fRawFields[found->second].slot;
}

TransformVar* TransformationDictionary::FindVar(const std::string& name) const {
    const auto found = fPlaceByName.find(name);
    return found == fPlaceByName.end() ? nullptr : fVars[found->second].get();
}

std::vector<std::size_t> TransformationDictionary::ReadSlots(std::size_t place) const {
    std::vector<std::size_t> slots;
    if (const Expression* expression = fVars[place]->GetExpression())
        expression->AppendSlots(slots);
    return slots;
}

// Depth first without recursion: a chain of fields may be as long as the document.
std::vector<std::string> TransformationDictionary::Arrange() {
    enum Progress : char { kNew, kOpen, kDone };
    struct Visit {
        std::size_t place;
        std::vector<std::size_t> slots;
        std::size_t next = 0;
    };
    std::vector<Progress> progress(fVars.size(), kNew);
    std::vector<std::size_t> order;
    std::vector<Visit> open;
    const auto enter = [&](std::size_t place) {
        progress[place] = kOpen;
        open.push_back({place, ReadSlots(place)});
    };
    for (std::size_t start = 0; start < fVars.size(); ++start) {
        if (progress[start] == kNew)
            enter(start);
        while (!open.empty()) {
            Visit& visit = open.back();
            if (visit.next == visit.slots.size()) {
                progress[visit.place] = kDone;
                order.push_back(visit.place);
                open.pop_back();
                continue;
            }
            const Slot& slot = fSlots[visit.slots[visit.next++]];
            if (slot.isRaw || progress[slot.place] == kDone)
                continue;
            if (progress[slot.place] == kNew) {
                enter(slot.place);
                continue;
            }
            auto first = std::find_if(open.begin(), open.end(), [&](const Visit& v) { return v.place == slot.place; });
            std::vector<std::string> circle;
            for (; first != open.end(); ++first)
                circle.push_back(fVars[first->place]->GetName());
            circle.push_back(circle.front());
            return circle;
        }
    }
    fOrder = std::move(order);
    return {};
}

std::vector<std::string> TransformationDictionary::FindRawFields(const std::vector<std::string>& names) const {
    std::vector<bool> isReached(fSlots.size(), false);
    std::vector<std::size_t> open;
    const auto reach = [&](std::size_t slot) {
        if (!isReached[slot])
            open.push_back(slot);
        isReached[slot] = true;
    };
    for (const std::string& name : names) {
        if (const TransformVar* variable = FindVar(name))
            reach(variable->GetSlot());
    }
    std::vector<std::string> raw;
    while (!open.empty()) {
        const Slot slot = fSlots[open.back()];
        open.pop_back();
        if (slot.isRaw) {
            raw.push_back(fRawFields[slot.place].name);
            continue;
        }
        for (const std::size_t source : ReadSlots(slot.place))
            reach(source);
    }
    return raw;
}

void TransformationDictionary::SetUpDerivedCaseRecord() {
    for (std::size_t i = 0; i < fVars.size(); ++i)
        fVars[i]->SetIndex(kFirstDerivedIndex + static_cast<int>(i));
}

const ScoreCaseRecord* TransformationDictionary::GetValuesForDerivedVars(const ScoreCaseRecord* record,
                                                                         const ScoreDictionary* dictionary) const {
    RecordCache& cache = CacheOfThread();
    if (cache.owner != fSerialNumber) {
        delete std::exchange(cache, RecordCache()).record;
        cache.record = new DerivedRecord(*this);
        cache.owner = fSerialNumber;
    }
    cache.record->Fill(record, dictionary);
    return cache.record;
}

}  // namespace KwBrevix_930
