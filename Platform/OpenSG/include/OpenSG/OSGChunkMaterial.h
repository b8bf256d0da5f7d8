#ifndef _OSGCHUNKMATERIAL_H_
#define _OSGCHUNKMATERIAL_H_

#include "OSGChunkMaterialBase.h"

namespace osg {

// Material made of state chunks. Chunks are referenced: the material holds a reference on each.
class OSG_SYSTEMLIB_DLLMAPPING ChunkMaterial : public ChunkMaterialBase
{
public:
    typedef ChunkMaterialBase Inherited;

    enum
    {
        AutoSlot = -1,
        AutoSlotReplace = -2
    };

    // Appends the chunk with its slot; returns false for null.
    bool addChunk(const StateChunkPtr& chunk, Int32 slot = AutoSlotReplace);
    bool subChunk(const StateChunkPtr& chunk, Int32 slot = AutoSlotReplace);
    // Index of the chunk, or -1.
    Int32 find(const StateChunkPtr& chunk);
    void clearChunks();
    bool isTransparent() const override;

protected:
    friend class ChunkMaterialBase;

    ChunkMaterial();
    ChunkMaterial(const ChunkMaterial& source);
    ~ChunkMaterial() override;
};

} // namespace osg

#endif
