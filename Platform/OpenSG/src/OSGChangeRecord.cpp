#include <OpenSG/OSGChangeRecord.h>

namespace osg {

namespace {
struct RecordState
{
    std::deque<ChangeRecordEntry> entries;
    bool enabled = false;
    UInt32 capacity = 65536;
};

RecordState& state()
{
    static RecordState s;
    return s;
}
} // namespace

const std::deque<ChangeRecordEntry>& ChangeRecord::getEntries()
{
    return state().entries;
}

UInt32 ChangeRecord::size()
{
    return UInt32(state().entries.size());
}

UInt32 ChangeRecord::count(UInt32 containerId, BitVector mask)
{
    UInt32 n = 0;
    for (const ChangeRecordEntry& e : state().entries)
        if (e.containerId == containerId && (e.whichField & mask) != 0)
            ++n;
    return n;
}

void ChangeRecord::clear()
{
    state().entries.clear();
}

void ChangeRecord::setEnabled(bool enabled)
{
    state().enabled = enabled;
}

bool ChangeRecord::isEnabled()
{
    return state().enabled;
}

void ChangeRecord::setCapacity(UInt32 capacity)
{
    RecordState& s = state();
    s.capacity = capacity;
    while (s.entries.size() > s.capacity)
        s.entries.pop_front();
}

UInt32 ChangeRecord::getCapacity()
{
    return state().capacity;
}

void ChangeRecord::record(UInt32 containerId, BitVector whichField, UInt32 origin)
{
    RecordState& s = state();
    if (!s.enabled || s.capacity == 0)
        return;
    if (s.entries.size() >= s.capacity)
        s.entries.pop_front();
    s.entries.push_back(ChangeRecordEntry{containerId, whichField, origin});
}

} // namespace osg
