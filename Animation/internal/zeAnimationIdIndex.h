#ifndef ZEANIMATIONIDINDEX_H
#define ZEANIMATIONIDINDEX_H

// Internal to the library, not installed: the registry's index from identifier to object.

#include <OpenSG/OSGBaseTypes.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

// Identifier to pointer, in one flat array probed linearly: a lookup touches one cache line in
// the common case, where a node-based hash map touches the bucket array and a node allocated
// somewhere among the objects, and divides by a prime for each. Every lookup of the registry goes
// through here: loading a million keys, resolving children on every frame. A null pointer marks a
// free slot, so only non-null pointers are stored.
//
// Most identifiers asked for that are absent (every candidate a fresh identifier is drawn from,
// every identifier a file brings along) are answered without touching the table: a filter of
// eight bits per slot, a bit per identifier hash, stays in cache where the table does not. Erasing
// leaves its bit set, since another identifier may share it; the bits are rebuilt from the table
// when stale ones could outnumber the live entries.
template <class T>
class zeAnimationIdIndex
{
public:
    T* find(osg::UInt64 id) const
    {
        if (table.empty())
            return nullptr;
        const osg::UInt64 h = mix(id);
        if (!testBit(h))
            return nullptr;
        for (std::size_t i = static_cast<std::size_t>(h) & mask;; i = (i + 1) & mask) {
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
        setBit(mix(id));
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
        if (++stale > count + 64)
            rebuildFilter();
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
        filter.clear();
        mask = 0;
        count = 0;
        stale = 0;
    }

    std::size_t size() const { return count; }

private:
    struct Slot
    {
        osg::UInt64 id = 0;
        T* value = nullptr;
    };

    // Identifiers drawn by the generator and the sequential ones of tests both spread out once
    // mixed (a round of the finaliser of MurmurHash3). The low bits pick the slot, the high bits
    // the filter's bit.
    static osg::UInt64 mix(osg::UInt64 id)
    {
        id ^= id >> 33;
        id *= 0xff51afd7ed558ccdULL;
        id ^= id >> 33;
        return id;
    }

    std::size_t slot(osg::UInt64 id) const { return static_cast<std::size_t>(mix(id)) & mask; }

    std::size_t filterBit(osg::UInt64 h) const
    {
        return static_cast<std::size_t>(h >> 32) & (filter.size() * 64 - 1);
    }
    bool testBit(osg::UInt64 h) const
    {
        const std::size_t bit = filterBit(h);
        return (filter[bit >> 6] >> (bit & 63)) & 1u;
    }
    void setBit(osg::UInt64 h)
    {
        const std::size_t bit = filterBit(h);
        filter[bit >> 6] |= std::uint64_t(1) << (bit & 63);
    }

    void rebuildFilter()
    {
        filter.assign(table.size() / 8, 0);
        for (const Slot& s : table) {
            if (s.value)
                setBit(mix(s.id));
        }
        stale = 0;
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
        filter.assign(capacity / 8, 0);
        stale = 0;
        for (const Slot& s : old) {
            if (s.value)
                insert(s.id, s.value);
        }
    }

    std::vector<Slot> table;
    std::vector<std::uint64_t> filter; // table.size() * 8 bits
    std::size_t mask = 0;
    std::size_t count = 0;
    std::size_t stale = 0;
};

#endif // ZEANIMATIONIDINDEX_H
