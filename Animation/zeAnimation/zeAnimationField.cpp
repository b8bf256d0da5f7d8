#include <zeAnimation/zeAnimationField.h>

#include <zeAnimation/zeAnimationManager.h>

#include <cstdint>
#include <new>

zeAnimationField::zeAnimationField(osg::UInt64 fieldId)
    : fcID(0), nodeID(0), value(0.0f), valuePos(0), dirty(true),
      id(fieldId != 0 ? fieldId : zeAnimationManager::the()->createUID())
{}

zeAnimationField::zeAnimationField(const zeAnimationField& other)
    : fcID(other.fcID), nodeID(other.nodeID), name(other.name), attribute(other.attribute),
      value(other.value), valuePos(other.valuePos), dirty(other.dirty),
      id(zeAnimationManager::the()->createUID())
{}

zeAnimationField::~zeAnimationField() = default;

zeAnimationField& zeAnimationField::operator=(const zeAnimationField& other)
{
    fcID = other.fcID;
    nodeID = other.nodeID;
    name = other.name;
    attribute = other.attribute;
    value = other.value;
    valuePos = other.valuePos;
    dirty = other.dirty;
    id = other.id;
    return *this;
}

// ---- Where fields live --------------------------------------------------------------------------
//
// A field is the one object of the pool that playback writes on every frame (each takes its
// curve's value before the scene does). Allocated one by one, fields end up scattered between the
// curves and keys made with them, a page apart, and a frame over many curves spends its time
// fetching them. So they are kept side by side in blocks of their own, handed out in order: fields
// made one after another lie one after another, as the curves that playback walks in order. A
// block goes back to the heap when its last field is destroyed (the last block with room is kept
// for the next field, and starts again from its first slot). Under AddressSanitizer every field is an
// allocation of its own, so that a use after destruction is still caught.

#if defined(__SANITIZE_ADDRESS__)
#define ZE_FIELD_BLOCKS 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZE_FIELD_BLOCKS 0
#endif
#endif
#ifndef ZE_FIELD_BLOCKS
#define ZE_FIELD_BLOCKS 1
#endif

#if ZE_FIELD_BLOCKS

namespace {

// A block is aligned to its size, so that a field finds its block from its own address.
const std::size_t kBlockBytes = std::size_t(1) << 17;

struct Block
{
    Block* previous; // in the list of blocks with room
    Block* next;
    void* given;         // slots given back, linked through their first word
    std::uint32_t used;  // slots holding a field
    std::uint32_t fresh; // slots never handed out start here
    bool listed;
};

const std::size_t kSlotBytes = sizeof(zeAnimationField);
const std::size_t kHeaderBytes = (sizeof(Block) + 63) / 64 * 64;
const std::uint32_t kSlots = static_cast<std::uint32_t>((kBlockBytes - kHeaderBytes) / kSlotBytes);
static_assert(kSlotBytes % alignof(zeAnimationField) == 0 && kSlotBytes >= sizeof(void*),
              "a slot holds a field or a link");

Block* withRoom = nullptr;

void list(Block* block)
{
    block->previous = nullptr;
    block->next = withRoom;
    if (withRoom)
        withRoom->previous = block;
    withRoom = block;
    block->listed = true;
}

void unlist(Block* block)
{
    if (block->previous)
        block->previous->next = block->next;
    else
        withRoom = block->next;
    if (block->next)
        block->next->previous = block->previous;
    block->listed = false;
}

Block* blockOf(void* slot)
{
    return reinterpret_cast<Block*>(reinterpret_cast<std::uintptr_t>(slot) & ~(kBlockBytes - 1));
}

void* takeSlot()
{
    Block* block = withRoom;
    if (!block) {
        // As any allocation, this one fails the way plain new does.
        block = static_cast<Block*>(::operator new(kBlockBytes, std::align_val_t(kBlockBytes)));
        block->given = nullptr;
        block->used = 0;
        block->fresh = 0;
        list(block);
    }
    void* slot = block->given;
    if (slot)
        block->given = *static_cast<void**>(slot);
    else
        slot = reinterpret_cast<char*>(block) + kHeaderBytes + block->fresh++ * kSlotBytes;
    if (++block->used == kSlots)
        unlist(block);
    return slot;
}

void giveSlot(void* slot)
{
    Block* block = blockOf(slot);
    if (--block->used == 0 && !(block->listed && withRoom == block && !block->next)) {
        if (block->listed)
            unlist(block);
        ::operator delete(block, std::align_val_t(kBlockBytes));
        return;
    }
    if (block->used == 0) {
        // The kept block is empty: hand its slots out in order again rather than in the order
        // the fields went, so a pool cleared and filled anew lies as well as the first one.
        block->given = nullptr;
        block->fresh = 0;
        return;
    }
    *static_cast<void**>(slot) = block->given;
    block->given = slot;
    if (!block->listed)
        list(block);
}

} // namespace

void* zeAnimationField::operator new(std::size_t size)
{
    return size == kSlotBytes ? takeSlot() : ::operator new(size);
}

void zeAnimationField::operator delete(void* field, std::size_t size)
{
    if (!field)
        return;
    if (size == kSlotBytes)
        giveSlot(field);
    else
        ::operator delete(field);
}

#else

void* zeAnimationField::operator new(std::size_t size)
{
    return ::operator new(size);
}

void zeAnimationField::operator delete(void* field, std::size_t)
{
    ::operator delete(field);
}

#endif
