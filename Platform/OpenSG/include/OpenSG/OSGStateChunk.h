#ifndef _OSGSTATECHUNK_H_
#define _OSGSTATECHUNK_H_

#include "OSGStateChunkBase.h"

namespace osg {

// Base of material state chunks (abstract). No concrete chunk exists here: nothing is rendered.
class OSG_SYSTEMLIB_DLLMAPPING StateChunk : public StateChunkBase
{
public:
    typedef StateChunkBase Inherited;

protected:
    friend class StateChunkBase;

    StateChunk();
    StateChunk(const StateChunk& source);
    ~StateChunk() override;
};

} // namespace osg

#endif
