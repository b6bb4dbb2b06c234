// CCmdList<T>: the one container: an owned ordered list of records of one class.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>
#include <utility>

#include "cmddata/core/core.h"
#include "cmddata/core/describe.h"

class CCmdString;
class CCmdBuffer;

namespace cmddata {
namespace detail {
/// True when count items of at least minItemSize bytes each can still lie in the reader's
/// region. A count that cannot is the mark of damaged or hostile bytes.
CMDDATA_API bool CountFits(const CCmdReader& reader, std::uint32_t count,
                           std::uint32_t minItemSize);
/// Runs the reader to the end of its region with kPastEnd, so that every later transfer of the
/// enclosing object fails too and the caller's final GetLastError() reports the damage.
CMDDATA_API void Exhaust(CCmdReader& reader);

/// A list's prefix and count moved through the stream itself (CCmdList::ReadWith, WriteWith).
struct ListStreamIn {
    CCmdReader& r;
    void Prefix(CCmdCore& self) { self.CCmdCore::Read(r); }
    void Count(std::uint32_t* n) { r.Read(n, 4); }
    bool Fits(std::uint32_t count, std::uint32_t min) { return CountFits(r, count, min); }
    void Exhaust() { cmddata::detail::Exhaust(r); }
};
struct ListStreamOut {
    CCmdWriter& w;
    void Prefix(CCmdCore& self) { self.CCmdCore::Write(w); }
    void Count(const std::uint32_t* n) { w.Write(n, 4); }
};

/// Smallest wire size of T, measured once per class.
template <class T>
std::uint32_t MinWireSize() {
    static const std::uint32_t size = [] {
        T scratch;
        return MinimalWireSize(scratch);
    }();
    return size;
}

/// How a list read makes an item it kept from an earlier read new again (Renew), so that its
/// texts, buffers and lists keep their memory for the bytes that follow, and what it does after
/// the item is read (Settle). Renew and read and Settle together leave the item as a new item
/// read from the same bytes would be. kOn false: the list destroys its items and makes new ones.
template <class T>
struct NoRenewal {
    static constexpr bool kOn = false;
    static void Renew(T&) {}
    static void Settle(T&) {}
};
// A text or buffer: a new one's header and no bytes, the block kept; one that the read left
// without bytes lets its block go, as a new one holds none.
template <class T>
struct BytesRenewal {
    static constexpr bool kOn = true;
    static void Renew(T& item) { item.Renew(); }
    static void Settle(T& item) {
        if (item.GetSize() == 0) item.RemoveAll();
    }
};
template <class T>
using DefaultRenewal =
    std::conditional_t<std::is_same_v<T, CCmdString> || std::is_same_v<T, CCmdBuffer>,
                       BytesRenewal<T>, NoRenewal<T>>;
}  // namespace detail
}  // namespace cmddata

template <class T>
class CCmdList;

// Whole-list transfers of the library's item classes (defined with the class table): the list's
// own algorithm, each item read or written straight through its field list, with no virtual call
// per item. A list of any other class moves its items through the streams' object transfer.
#define CMDDATA_RECORD(Class)                                        \
    class Class;                                                     \
    CMDDATA_API void CmdDataReadList(CCmdReader&, CCmdList<Class>&); \
    CMDDATA_API void CmdDataWriteList(CCmdWriter&, CCmdList<Class>&);
#include "cmddata/classes.def"
CMDDATA_RECORD(CCmdString)
CMDDATA_RECORD(CCmdBuffer)
#undef CMDDATA_RECORD

namespace cmddata {
namespace detail {
template <class L, class = void>
struct HasListCodec : std::false_type {};
template <class L>
struct HasListCodec<
    L, std::void_t<decltype(CmdDataReadList(std::declval<CCmdReader&>(), std::declval<L&>()))>>
    : std::true_type {};
}  // namespace detail
}  // namespace cmddata

/// An ordered list of owned T records: version prefix, u32 count, then each item's own form.
///
/// The items live in chunks that the list owns, so appending rarely allocates and an item's
/// address stays put until it is removed (GetAt hands out references). Emptying the list keeps
/// its chunks, as a vector keeps its capacity, up to kKeptBytes; a read keeps what its count
/// needs and lets go of chunks beyond twice that, so one huge message does not pin its memory.
/// Until an item is removed the items are the chunks' slots in order, and an item takes no more
/// memory than itself; the first removal lists them in an array of pointers, which the list
/// keeps until it is emptied, and the slots removed are used again by the next appends.
///
/// A read into the list keeps the items it held, where their class allows it, and makes them new
/// again for the items it reads (see NoRenewal), so that their texts, buffers and lists need no
/// new memory; items held beyond the count read are kept for the next read, within the chunks a
/// read keeps. Emptying the list otherwise (RemoveAll, assignment) destroys its items.
///
/// Copy construction shares the source's items (right after a copy both lists hold the very same
/// items). The items are reference-counted as one chain, so either list may be destroyed or
/// emptied first; a list that changes its shared chain (AddTail, RemoveAt) first takes a copy of
/// it for itself, leaving the other list as it was. Assignment copies deeply.
///
/// Reading is linear in the item count. A count that the bytes left in the region could not hold
/// (count x the smallest wire size of T) is not allocated for: the list stays empty and the
/// reader is run to its end with kPastEnd. Every count that could fit is read as written: all
/// count items are created and read even after a transfer has failed.
template <class T>
class CCmdList : public CCmdCore {
    // A run of item slots behind its head, handed out front to back.
    struct Chunk {
        Chunk* next;
        std::uint32_t slots;
    };
    static constexpr std::size_t kChunkHead =
        (sizeof(Chunk) + alignof(T) - 1) / alignof(T) * alignof(T);
    static_assert(alignof(T) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__, "items need no more");
    // A slot given back by RemoveAt holds the link to the next one given back.
    static_assert(sizeof(T) >= sizeof(void*) && alignof(T) >= alignof(void*), "room for a link");
    // A slot holds a T and never a class derived from it: items are destroyed by T::~T(), with
    // no virtual call.
    struct Chain {
        std::atomic<std::uint32_t> refs;
        std::uint32_t count;
        Chunk* chunks;         // every chunk, in the order they are filled
        Chunk* fill;           // the chunk new items come from (those before it are full)
        std::uint32_t used;    // slots of fill handed out
        std::uint32_t slots;   // slots in all chunks
        std::uint32_t handed;  // slots handed out from chunks since the list was last emptied
        std::uint32_t kept;    // slots from the first on that hold a constructed item; those at
                               // or past handed are kept by a read for the next one to renew
        bool ordered;          // the items are the slots handed out, in order: no removal since
                               // the list was last emptied
        T** order;             // once not ordered: the items in order, room entries
        std::uint32_t room;
        void* spare;  // slots given back by RemoveAt, each holding a link to the next
    };

public:
    /// Item memory an emptied list keeps for its next items.
    static constexpr std::size_t kKeptBytes = 64 * 1024;

    CCmdList() = default;
    CCmdList(const CCmdList& other) : CCmdCore(other), chain_(other.chain_) {
        if (chain_ != nullptr) chain_->refs.fetch_add(1, std::memory_order_relaxed);
    }
    ~CCmdList() override { Drop(); }

    /// Deep copy, item by item with T's assignment; this list's version and reserved word stay.
    /// Assigning a list to itself changes nothing.
    void operator=(const CCmdList& source) {
        if (&source == this) return;
        Chain* keep = source.chain_;  // source may share our chain; hold it while we let go
        if (keep == nullptr) return Empty(kKeptBytes);
        keep->refs.fetch_add(1, std::memory_order_relaxed);
        Empty(kKeptBytes);
        bool room = true;  // out of memory: the items copied so far stay
        EachItem(*keep, [&](const T& item) {
            T* copy = room ? Append() : nullptr;
            if (copy != nullptr) *copy = item;
            room = copy != nullptr;
        });
        ReleaseChain(keep);
    }

    /// Appends a default T; returns its index.
    std::uint32_t AddTail() { return Append() != nullptr ? chain_->count - 1 : 0; }
    /// Appends a copy of item (T's assignment); returns its index.
    std::uint32_t AddTail(const T& item) {
        T* added = Append();
        if (added == nullptr) return 0;
        *added = item;
        return chain_->count - 1;
    }

    /// Item index; an index of 0 or past the end yields the first item. On an empty list the
    /// result is a shared default placeholder, not an item: callers check GetCount() first.
    T& GetAt(std::uint32_t index) const {
        if (chain_ == nullptr || chain_->count == 0) return Placeholder();
        const Chain& c = *chain_;
        if (index >= c.count) index = 0;
        if (!c.ordered) return *c.order[index];
        Chunk* k = c.chunks;  // a walk of the few chunks, not of the items before index
        for (; index >= k->slots; k = k->next) index -= k->slots;
        return *SlotAt(k, index);
    }
    T& operator[](std::uint32_t index) const { return GetAt(index); }

    std::uint32_t GetCount() const { return chain_ != nullptr ? chain_->count : 0; }
    bool IsEmpty() const { return GetCount() == 0; }

    /// Removes item index; false (nothing changed) when index is past the end, or when memory is
    /// short for a copy of a shared list or for the list of the items' order.
    bool RemoveAt(std::uint32_t index) {
        if (chain_ == nullptr || index >= chain_->count) return false;
        if (!Unshare() || !Unorder()) return false;
        Chain& c = *chain_;
        T* const victim = c.order[index];
        for (std::uint32_t i = index + 1; i < c.count; ++i) c.order[i - 1] = c.order[i];
        c.count -= 1;
        victim->T::~T();
        c.spare = new (victim) void*(c.spare);  // the slot is used again by the next append
        return true;
    }

    /// Visits each item, head to tail, in linear time.
    template <class F>
    void ForEach(F&& visit) const {
        if (chain_ != nullptr) EachItem(*chain_, visit);
    }

    void RemoveAll() override { Empty(kKeptBytes); }

    void Read(CCmdReader& reader) override {
        if constexpr (cmddata::detail::HasListCodec<CCmdList>::value) {
            if (cmddata::detail::IsPlain(reader)) return CmdDataReadList(reader, *this);
        }
        ReadWith(
            reader, [](std::uint32_t, bool) {}, [&reader](T& item) { reader.Read(&item); });
    }
    void Write(CCmdWriter& writer) override {
        if constexpr (cmddata::detail::HasListCodec<CCmdList>::value) {
            if (cmddata::detail::IsPlain(writer)) return CmdDataWriteList(writer, *this);
        }
        WriteWith(writer, [&writer](T& item) { writer.Write(&item); });
    }
    void Visit(cmddata::FieldProcessor& p) override { p.List(nullptr, *this); }
    static const char* TypeName() { return "CCmdList"; }
    using ItemType = T;

    /// The list's reading algorithm with the item transfer left to the caller: prefix, empty
    /// the list, count, the count check, then count items.
    template <class OnCount, class OnItem>
    void ReadWith(CCmdReader& reader, OnCount&& onCount, OnItem&& onItem) {
        cmddata::detail::ListStreamIn in{reader};
        ReadThrough(in, onCount, onItem);
    }
    /// The same with the prefix and count moved by in (Prefix, Count, Fits, Exhaust).
    template <class In, class OnCount, class OnItem>
    void ReadThrough(In& in, OnCount&& onCount, OnItem&& onItem) {
        ReadRenewing<cmddata::detail::DefaultRenewal<T>>(in, onCount, onItem);
    }
    /// The same with the items kept from the last read made new by Renewal (NoRenewal).
    template <class Renewal, class In, class OnCount, class OnItem>
    CMDDATA_ALWAYS_INLINE void ReadRenewing(In& in, OnCount&& onCount, OnItem&& onItem) {
        in.Prefix(*this);
        std::uint32_t count = 0;  // stays 0 when the transfer moves nothing
        in.Count(&count);
        const bool fits = in.Fits(count, cmddata::detail::MinWireSize<T>());
        onCount(count, fits);
        if (Renewal::kOn && fits)
            KeepItems();
        else
            Empty(~std::size_t{0});
        if (!fits) {
            in.Exhaust();
            return;
        }
        if (!Reserve(count)) {  // out of memory: stop, and make the failure visible
            in.Exhaust();
            return;
        }
        if (count == 0) return;
        // The emptied list is ordered: its items are the slots handed out, run after run.
        Chain& c = *chain_;
        for (std::uint32_t i = 0; i < count;) {
            while (c.used == c.fill->slots) {
                c.fill = c.fill->next;
                c.used = 0;
            }
            T* slot = SlotAt(c.fill, c.used);
            std::uint32_t run = c.fill->slots - c.used;
            if (run > count - i) run = count - i;
            std::uint32_t renew = 0;  // slots at the front of the run that hold a kept item
            if constexpr (Renewal::kOn) {
                if (c.kept > c.handed) renew = c.kept - c.handed < run ? c.kept - c.handed : run;
            }
            c.used += run;
            c.handed += run;
            c.count += run;
            for (T* const end = slot + renew; slot != end; ++slot) {
                Renewal::Renew(*slot);
                onItem(*slot);
                Renewal::Settle(*slot);
            }
            for (T* const end = slot + (run - renew); slot != end; ++slot) onItem(*new (slot) T());
            i += run;
        }
        if (c.kept < c.handed) c.kept = c.handed;
    }
    /// Empties the list as a read into it does: where Renewal can make its items new again,
    /// they stay for the next read to renew; otherwise they are destroyed.
    template <class Renewal>
    void Retire() {
        if constexpr (Renewal::kOn)
            KeepItems();
        else
            Empty(kKeptBytes);
    }
    /// The list's writing algorithm with the item transfer left to the caller.
    template <class OnItem>
    void WriteWith(CCmdWriter& writer, OnItem&& onItem) {
        cmddata::detail::ListStreamOut out{writer};
        WriteThrough(out, onItem);
    }
    /// The same with the prefix and count moved by out (Prefix, Count).
    template <class Out, class OnItem>
    CMDDATA_ALWAYS_INLINE void WriteThrough(Out& out, OnItem&& onItem) {
        out.Prefix(*this);
        const std::uint32_t count = GetCount();
        out.Count(&count);
        ForEach(onItem);
    }

private:
    static T& Placeholder() {
        static T placeholder;
        return placeholder;
    }
    static T* SlotAt(Chunk* chunk, std::uint32_t i) {
        return reinterpret_cast<T*>(reinterpret_cast<unsigned char*>(chunk) + kChunkHead) + i;
    }
    // Calls f on each item, in order: slot after slot, chunk after chunk, while the list is
    // ordered, and through the order after a removal.
    template <class F>
    static void EachItem(const Chain& c, F&& f) {
        if (!c.ordered) {
            for (std::uint32_t i = 0; i < c.count; ++i) f(*c.order[i]);
            return;
        }
        std::uint32_t left = c.count;
        for (Chunk* k = c.chunks; k != nullptr && left != 0; k = k->next) {
            const std::uint32_t run = k->slots < left ? k->slots : left;
            for (T *slot = SlotAt(k, 0), *end = slot + run; slot != end; ++slot) f(*slot);
            left -= run;
        }
    }
    // Calls f on each slot numbered from to to (slots numbered across the chunks, front to back).
    template <class F>
    static void ForSlots(const Chain& c, std::uint32_t from, std::uint32_t to, F&& f) {
        std::uint32_t first = 0;  // number of the chunk's first slot
        for (Chunk* k = c.chunks; k != nullptr && first < to; first += k->slots, k = k->next) {
            const std::uint32_t end = first + k->slots < to ? first + k->slots : to;
            for (std::uint32_t i = from > first ? from : first; i < end; ++i)
                f(SlotAt(k, i - first));
        }
    }
    // Destroys the items kept past the list's own.
    static void DropKept(Chain& c) {
        if (c.kept > c.handed) ForSlots(c, c.handed, c.kept, [](T* item) { item->T::~T(); });
        c.kept = c.handed;
    }
    // Destroys every item; the order's memory stays for the next removal.
    static void DestroyItems(Chain& c) {
        DropKept(c);
        EachItem(c, [](T& item) { item.T::~T(); });
        c.spare = nullptr;
        c.count = c.handed = c.used = c.kept = 0;
        c.fill = c.chunks;
        c.ordered = true;
    }
    static void FreeChunks(Chain& c) {
        DropKept(c);  // only kept items can be left: the callers hand out no slot
        for (Chunk* k = c.chunks; k != nullptr;) {
            Chunk* next = k->next;
            ::operator delete(k, std::nothrow);
            k = next;
        }
        ::operator delete(c.order, std::nothrow);
        c.chunks = c.fill = nullptr;
        c.order = nullptr;
        c.slots = c.used = c.room = 0;
    }
    static void ReleaseChain(Chain* chain) {
        if (chain == nullptr || chain->refs.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
        DestroyItems(*chain);
        FreeChunks(*chain);
        delete chain;
    }
    void Drop() {
        ReleaseChain(chain_);
        chain_ = nullptr;
    }
    // Destroys every item. The chunks stay for the next items while they hold at most keep
    // bytes; a chain shared with a copy is left to the copy.
    void Empty(std::size_t keep) {
        if (chain_ == nullptr) return;
        if (chain_->refs.load(std::memory_order_acquire) != 1) return Drop();
        DestroyItems(*chain_);
        if (static_cast<std::size_t>(chain_->slots) * sizeof(T) > keep) FreeChunks(*chain_);
    }
    // Empties the list but keeps its items constructed in their slots, for the next read to make
    // new again; a list whose items are not slot after slot, or that shares them, is emptied.
    void KeepItems() {
        if (chain_ == nullptr) return;
        if (chain_->refs.load(std::memory_order_acquire) != 1) return Drop();
        Chain& c = *chain_;
        if (!c.ordered) return Empty(~std::size_t{0});
        if (c.kept < c.handed) c.kept = c.handed;
        c.count = c.handed = c.used = 0;
        c.fill = c.chunks;
    }
    bool Own() {
        if (chain_ != nullptr) return Unshare();
        chain_ = new (std::nothrow)
            Chain{{1}, 0, nullptr, nullptr, 0, 0, 0, 0, true, nullptr, 0, nullptr};
        return chain_ != nullptr;
    }
    // Adds a chunk of n slots behind the others.
    bool Grow(std::uint32_t n) {
        Chain& c = *chain_;
        if (n > (SIZE_MAX - kChunkHead) / sizeof(T) || n > ~c.slots) return false;
        void* raw = ::operator new (kChunkHead + std::size_t{n} * sizeof(T), std::nothrow);
        if (raw == nullptr) return false;
        Chunk* chunk = new (raw) Chunk{nullptr, n};
        Chunk** end = &c.chunks;
        while (*end != nullptr) end = &(*end)->next;
        *end = chunk;
        if (c.fill == nullptr) c.fill = chunk;
        c.slots += n;
        return true;
    }
    // Makes room for n more items without allocating per item. A read sizes the chunks to its
    // count: chunks beyond twice what it needs go, and a shortfall is one chunk of it.
    bool Reserve(std::uint32_t n) {
        if (chain_ != nullptr && chain_->handed == 0 &&
            chain_->refs.load(std::memory_order_acquire) == 1 && chain_->slots / 2 > n + 16)
            FreeChunks(*chain_);
        if (n == 0) return true;
        if (!Own()) return false;
        Chain& c = *chain_;
        const std::uint32_t left = c.slots - c.handed;
        if (left >= n) return true;
        const std::uint32_t need = n - left;
        // Growing by at least half of what is held keeps the number of chunks logarithmic.
        return Grow(need > c.slots / 2 ? need : c.slots / 2) || Grow(need);
    }
    // Makes the order hold n items, keeping those it lists; the list must own its chain.
    bool Room(std::uint64_t n) {
        Chain& c = *chain_;
        if (n <= c.room) return true;
        std::uint64_t want = std::uint64_t{c.room} * 2 > n ? std::uint64_t{c.room} * 2 : n;
        if (want < 16) want = 16;
        if (want > ~std::uint32_t{0}) want = ~std::uint32_t{0};
        if (n > want || want > SIZE_MAX / sizeof(T*)) return false;
        void* raw = ::operator new(static_cast<std::size_t>(want) * sizeof(T*), std::nothrow);
        if (raw == nullptr) return false;
        T** grown = static_cast<T**>(raw);
        if (!c.ordered)
            for (std::uint32_t i = 0; i < c.count; ++i) grown[i] = c.order[i];
        ::operator delete(c.order, std::nothrow);
        c.order = grown;
        c.room = static_cast<std::uint32_t>(want);
        return true;
    }
    // Lists the items in the order before the first removal; the list must own its chain.
    bool Unorder() {
        Chain& c = *chain_;
        if (!c.ordered) return true;
        if (!Room(c.count)) return false;
        std::uint32_t i = 0;
        EachItem(c, [&](T& item) { c.order[i++] = &item; });
        c.ordered = false;
        return true;
    }
    // A slot from the chunks, or null when they are full; the list must own its chain.
    void* FreshSlot() {
        Chain& c = *chain_;
        while (c.fill != nullptr && c.used == c.fill->slots) {
            c.fill = c.fill->next;
            c.used = 0;
        }
        if (c.fill == nullptr) return nullptr;
        T* slot = SlotAt(c.fill, c.used++);
        if (c.handed < c.kept) slot->T::~T();  // a kept item: made anew by the caller
        c.handed += 1;
        if (c.kept < c.handed) c.kept = c.handed;
        return slot;
    }
    // Constructs a default item behind the others; null when memory is short.
    T* Append() {
        if (!Own()) return nullptr;
        Chain& c = *chain_;
        if (!c.ordered && !Room(std::uint64_t{c.count} + 1)) return nullptr;
        void* slot = c.spare;  // while ordered there is none: the item is the next slot
        if (slot != nullptr) {
            c.spare = *std::launder(static_cast<void**>(slot));
        } else {
            slot = FreshSlot();
            if (slot == nullptr) {
                if (!Grow(c.slots < 4 ? 4 : c.slots) && !Grow(1)) return nullptr;
                slot = FreshSlot();
            }
        }
        T* const item = new (slot) T();
        if (!c.ordered) c.order[c.count] = item;
        c.count += 1;
        return item;
    }
    // Makes the chain this list's own before it changes (copy-on-write of shared items).
    bool Unshare() {
        if (chain_ == nullptr || chain_->refs.load(std::memory_order_acquire) == 1) return true;
        Chain* shared = chain_;
        chain_ = nullptr;
        if (!Own() || !Reserve(shared->count)) {  // out of memory: stay as we were
            Drop();
            chain_ = shared;
            return false;
        }
        EachItem(*shared, [this](const T& item) {
            *new (FreshSlot()) T() = item;
            chain_->count += 1;
        });
        ReleaseChain(shared);
        return true;
    }

    Chain* chain_ = nullptr;
};

namespace cmddata {
namespace detail {

// A list as the field processors see it.
template <class U>
class ListOf final : public ListAccess {
public:
    explicit ListOf(CCmdList<U>& list) : l_(list) {}
    const char* ItemType() const override { return U::TypeName(); }
    std::uint32_t Count() const override { return l_.GetCount(); }
    CCmdCore& Self() override { return l_; }
    std::uint32_t ItemBytes() const override { return sizeof(U); }
    void Clear() override { l_.RemoveAll(); }
    std::uint32_t Append(std::uint32_t n) override {
        const std::uint32_t before = l_.GetCount();
        for (std::uint32_t i = 0; i < n && l_.GetCount() == before + i; ++i) l_.AddTail();
        return l_.GetCount() - before;
    }
    void ForEach(ItemSink& sink) override {
        std::uint32_t index = 0;
        l_.ForEach([&](U& item) { sink.Item(index++, Ref(item)); });
    }
    void Read(CCmdReader& reader, ItemSink& sink) override {
        std::uint32_t index = 0;
        l_.ReadWith(
            reader, [&](std::uint32_t count, bool fits) { sink.Count(count, fits); },
            [&](U& item) { sink.Item(index++, Ref(item)); });
    }
    void Write(CCmdWriter& writer, ItemSink& sink) override {
        std::uint32_t index = 0;
        l_.WriteWith(writer, [&](U& item) { sink.Item(index++, Ref(item)); });
    }

private:
    static RecordRef Ref(U& item) {
        return RecordRef{item, U::TypeName(), &FieldProcessor::RunItem<U>};
    }
    CCmdList<U>& l_;
};

}  // namespace detail

template <class U>
inline void FieldProcessor::List(const char* name, CCmdList<U>& list) {
    detail::ListOf<U> access(list);
    List(name, static_cast<ListAccess&>(access));
}

}  // namespace cmddata
