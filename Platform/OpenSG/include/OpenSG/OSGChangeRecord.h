#ifndef _OSGCHANGERECORD_H_
#define _OSGCHANGERECORD_H_

// Not part of OpenSG. OpenSG keeps the changes of endEditCP in a per-thread ChangeList meant for
// multi-aspect synchronisation; this is a small record of the same information that tests read to
// check which container was edited with which mask, and how often (including "no change").

#include "OSGBaseTypes.h"
#include "OSGFieldContainerBase.h"

#include <deque>

namespace osg {

struct ChangeRecordEntry
{
    UInt32 containerId;
    BitVector whichField;
    UInt32 origin;
};

class OSG_SYSTEMLIB_DLLMAPPING ChangeRecord
{
public:
    // Every endEditCP / endEditNotChangedCP on a non-null container, oldest first.
    static const std::deque<ChangeRecordEntry>& getEntries();
    static UInt32 size();
    // Number of entries for that container whose mask shares a bit with `mask`.
    static UInt32 count(UInt32 containerId, BitVector mask = FieldBits::AllFields);
    static void clear();

    // Recording is off until a test turns it on, so that programs and benchmarks pay nothing for
    // it. At most `capacity` entries are kept (default 65536); beyond that the oldest are dropped,
    // so a long run does not grow without bound.
    static void setEnabled(bool enabled);
    static bool isEnabled();
    static void setCapacity(UInt32 capacity);
    static UInt32 getCapacity();

    static void record(UInt32 containerId, BitVector whichField, UInt32 origin);
};

} // namespace osg

#endif
