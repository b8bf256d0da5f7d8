#ifndef _OSGSTATECHUNKBASE_H_
#define _OSGSTATECHUNKBASE_H_

#include "OSGAttachment.h"
#include "OSGStateChunkFields.h"

namespace osg {

class StateChunk;

// Base of material state chunks (abstract). No concrete chunk exists here: nothing is rendered.
class OSG_SYSTEMLIB_DLLMAPPING StateChunkBase : public Attachment
{
public:
    typedef Attachment Inherited;
    typedef StateChunkPtr Ptr;

    enum
    {
        NextFieldId = Inherited::NextFieldId
    };

    OSG_FC_TYPE_FUNCTIONS_DECL

protected:
    StateChunkBase();
    StateChunkBase(const StateChunkBase& source);
    ~StateChunkBase() override;
};

} // namespace osg

#endif
