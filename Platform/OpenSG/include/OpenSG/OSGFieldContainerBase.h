#ifndef _OSGFIELDCONTAINERBASE_H_
#define _OSGFIELDCONTAINERBASE_H_

#include "OSGBaseTypes.h"

namespace osg {

namespace FieldBits {
const BitVector AllFields = ~BitVector(0);
const BitVector NoField = 0;
const BitVector Field0 = BitVector(1) << 0;
const BitVector Field1 = BitVector(1) << 1;
const BitVector Field2 = BitVector(1) << 2;
const BitVector Field3 = BitVector(1) << 3;
const BitVector Field4 = BitVector(1) << 4;
const BitVector Field5 = BitVector(1) << 5;
const BitVector Field6 = BitVector(1) << 6;
const BitVector Field7 = BitVector(1) << 7;
const BitVector Field8 = BitVector(1) << 8;
const BitVector Field9 = BitVector(1) << 9;
const BitVector Field10 = BitVector(1) << 10;
const BitVector Field11 = BitVector(1) << 11;
const BitVector Field12 = BitVector(1) << 12;
const BitVector Field13 = BitVector(1) << 13;
const BitVector Field14 = BitVector(1) << 14;
const BitVector Field15 = BitVector(1) << 15;
const BitVector Field16 = BitVector(1) << 16;
const BitVector Field17 = BitVector(1) << 17;
const BitVector Field18 = BitVector(1) << 18;
const BitVector Field19 = BitVector(1) << 19;
const BitVector Field20 = BitVector(1) << 20;
const BitVector Field21 = BitVector(1) << 21;
const BitVector Field22 = BitVector(1) << 22;
const BitVector Field23 = BitVector(1) << 23;
const BitVector Field24 = BitVector(1) << 24;
const BitVector Field25 = BitVector(1) << 25;
const BitVector Field26 = BitVector(1) << 26;
const BitVector Field27 = BitVector(1) << 27;
const BitVector Field28 = BitVector(1) << 28;
const BitVector Field29 = BitVector(1) << 29;
const BitVector Field30 = BitVector(1) << 30;
const BitVector Field31 = BitVector(1) << 31;
} // namespace FieldBits

// Who made a change; passed to endEditCP and on to FieldContainer::changed.
namespace ChangedOrigin {
const UInt32 External = 0x0001;
const UInt32 Sync = 0x0002;
const UInt32 Child = 0x0004;
const UInt32 Abstract = 0x0008;
const UInt32 AbstrIgnoreCore = 0x0100;
const UInt32 AbstrIgnoreChild = 0x0200;
const UInt32 AbstrCheckValid = 0x0400;
const UInt32 AbstrIncRefCount = 0x0800;
} // namespace ChangedOrigin

} // namespace osg

#endif
