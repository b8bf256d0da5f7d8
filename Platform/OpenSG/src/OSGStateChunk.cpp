#include <OpenSG/OSGStateChunk.h>

namespace osg {

FieldContainerType& StateChunkBase::getClassType()
{
    static FieldContainerType type("StateChunk", &Attachment::getClassType(), nullptr, nullptr, {});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(StateChunkBase)

StateChunkBase::StateChunkBase() {}

StateChunkBase::StateChunkBase(const StateChunkBase& source) : Inherited(source) {}

StateChunkBase::~StateChunkBase() = default;

StateChunk::StateChunk() = default;

StateChunk::StateChunk(const StateChunk& source) : Inherited(source) {}

StateChunk::~StateChunk() = default;

namespace {
[[maybe_unused]] const bool registered = (StateChunk::getClassType(), true);
} // namespace

} // namespace osg
