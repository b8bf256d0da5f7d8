#ifndef _OSGCHUNKMATERIALBASE_H_
#define _OSGCHUNKMATERIALBASE_H_

#include "OSGChunkMaterialFields.h"
#include "OSGMFSysTypes.h"
#include "OSGMaterial.h"
#include "OSGStateChunk.h"

namespace osg {

class ChunkMaterial;

// Material made of state chunks. Chunks are referenced: the material holds a reference on each.
class OSG_SYSTEMLIB_DLLMAPPING ChunkMaterialBase : public Material
{
public:
    typedef Material Inherited;
    typedef ChunkMaterialPtr Ptr;

    enum
    {
        ChunksFieldId = Inherited::NextFieldId,
        SlotsFieldId = ChunksFieldId + 1,
        NextFieldId = SlotsFieldId + 1
    };
    static constexpr BitVector ChunksFieldMask = TypeTraits<BitVector>::One << ChunksFieldId;
    static constexpr BitVector SlotsFieldMask = TypeTraits<BitVector>::One << SlotsFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(ChunkMaterialPtr)

    OSG_MFIELD_REF_ACCESSORS(MFStateChunkPtr, StateChunkPtr, Chunks)
    OSG_MFIELD_ACCESSORS(MFInt32, Int32, Slots)

protected:
    ChunkMaterialBase();
    ChunkMaterialBase(const ChunkMaterialBase& source);
    ~ChunkMaterialBase() override; // releases the referenced containers
};

} // namespace osg

#endif
