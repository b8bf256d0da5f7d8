#include <OpenSG/OSGChunkMaterial.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(ChunkMaterialBase, ChunkMaterial, ChunkMaterialPtr)

FieldContainerType& ChunkMaterialBase::getClassType()
{
    static FieldContainerType type(
        "ChunkMaterial", &Material::getClassType(), nullptr, &osgCreateChunkMaterial,
        {OSG_MFIELD_DESC(ChunkMaterialBase, MFStateChunkPtr, "chunks", Chunks, false),
         OSG_MFIELD_DESC(ChunkMaterialBase, MFInt32, "slots", Slots, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(ChunkMaterialBase)

ChunkMaterialBase::ChunkMaterialBase() {}

ChunkMaterialBase::ChunkMaterialBase(const ChunkMaterialBase& source)
    : Inherited(source), _mfChunks(source._mfChunks), _mfSlots(source._mfSlots)
{
    // The copy shares the referenced containers, so it takes its own references.
    for (const StateChunkPtr& element : _mfChunks)
        addRefCP(element);
}

ChunkMaterialBase::~ChunkMaterialBase()
{
    clearChunks();
}

ChunkMaterial::ChunkMaterial() = default;

ChunkMaterial::ChunkMaterial(const ChunkMaterial& source) : Inherited(source) {}

ChunkMaterial::~ChunkMaterial() = default;

bool ChunkMaterial::addChunk(const StateChunkPtr& chunk, Int32 slot)
{
    if (chunk == NullFC)
        return false;
    pushToChunks(chunk);
    editSlots().push_back(slot);
    return true;
}

bool ChunkMaterial::subChunk(const StateChunkPtr& chunk, Int32)
{
    Int32 index = find(chunk);
    if (index < 0)
        return false;
    removeFromChunks(UInt32(index));
    if (UInt32(index) < getSlots().size())
        editSlots().erase(editSlots().begin() + index);
    return true;
}

Int32 ChunkMaterial::find(const StateChunkPtr& chunk)
{
    auto it = getChunks().find(chunk);
    return it != getChunks().end() ? Int32(it - getChunks().begin()) : -1;
}

void ChunkMaterial::clearChunks()
{
    ChunkMaterialBase::clearChunks();
    editSlots().clear();
}

bool ChunkMaterial::isTransparent() const
{
    return getTransparencyMode() == TransparencyForceTransparent;
}

namespace {
[[maybe_unused]] const bool registered = (ChunkMaterial::getClassType(), true);
} // namespace

} // namespace osg
