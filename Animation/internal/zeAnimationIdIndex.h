#ifndef ZEANIMATIONIDINDEX_H
#define ZEANIMATIONIDINDEX_H

// Internal to the library, not installed: the registry's index from identifier to object.

#include <OpenSG/OSGBaseTypes.h>

#include <cstddef>
#include <utility>
#include <vector>

// Identifier to pointer, in one flat array probed linearly: a lookup touches one cache line in
// the common case, where a node-based hash map touches the bucket array and a node allocated
// somewhere among the objects, and divides by a prime for each. Every lookup of the registry goes
// through here: loading a million keys, resolving children on every frame. A null pointer marks a
// free slot, so only non-null pointers are stored.
template <class T>
class zeAnimationIdIndex
{
public:
    T* find(osg::UInt64 id) const
    {
        if (table.empty())
            return nullptr;
        for (std::size_t i = slot(id);; i = (i + 1) & mask) {
            const Slot& s = table[i];
            if (!s.value || s.id == id)
                return s.value;
        }
    }

    // False, keeping the entry there, when the identifier is present already.
    bool insert(osg::UInt64 id, T* value)
    {
        if ((count + 1) * 2 > table.size())
            rehash(table.empty() ? 16 : table.size() * 2);
        std::size_t i = slot(id);
        for (; table[i].value; i = (i + 1) & mask) {
            if (table[i].id == id)
                return false;
        }
        table[i].id = id;
        table[i].value = value;
        ++count;
        return true;
    }

    // Replaces the pointer of a present identifier, or inserts it.
    void assign(osg::UInt64 id, T* value)
    {
        if (!insert(id, value))
            table[locate(id)].value = value;
    }

    bool erase(osg::UInt64 id)
    {
        if (table.empty() || !find(id))
            return false;
        // Backward-shift deletion: later entries of the same probe run move up, so lookups never
        // meet a hole before their entry and no tombstones accumulate.
        std::size_t hole = locate(id);
        for (std::size_t next = (hole + 1) & mask; table[next].value; next = (next + 1) & mask) {
            const std::size_t home = slot(table[next].id);
            const bool movable = hole <= next ? (home <= hole || home > next) : (home <= hole && home > next);
            if (movable) {
                table[hole] = table[next];
                hole = next;
            }
        }
        table[hole] = Slot();
        --count;
        return true;
    }

    void reserve(std::size_t entries)
    {
        std::size_t capacity = 16;
        while (capacity < entries * 2)
            capacity *= 2;
        if (capacity > table.size())
            rehash(capacity);
    }

    void clear()
    {
        table.clear();
        mask = 0;
        count = 0;
    }

    std::size_t size() const { return count; }

private:
    struct Slot
    {
        osg::UInt64 id = 0;
        T* value = nullptr;
    };

    // Identifiers drawn by the generator and the sequential ones of tests both spread out once
    // mixed (the finaliser of MurmurHash3).
    std::size_t slot(osg::UInt64 id) const
    {
        id ^= id >> 33;
        id *= 0xff51afd7ed558ccdULL;
        id ^= id >> 33;
        return static_cast<std::size_t>(id) & mask;
    }

    std::size_t locate(osg::UInt64 id) const
    {
        std::size_t i = slot(id);
        while (table[i].id != id || !table[i].value)
            i = (i + 1) & mask;
        return i;
    }

    void rehash(std::size_t capacity)
    {
        std::vector<Slot> old(capacity);
        old.swap(table);
        mask = capacity - 1;
        count = 0;
        for (const Slot& s : old) {
            if (s.value)
                insert(s.id, s.value);
        }
    }

    std::vector<Slot> table;
    std::size_t mask = 0;
    std::size_t count = 0;
};

#endif // ZEANIMATIONIDINDEX_H
