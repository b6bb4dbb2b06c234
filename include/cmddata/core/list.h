// CCmdList<T>: the one container: an owned singly linked list of records of one class.
#pragma once

#include <atomic>
#include <cstdint>
#include <new>
#include <utility>

#include "cmddata/core/core.h"
#include "cmddata/core/describe.h"

namespace cmddata {
namespace detail {
/// True when count items of at least minItemSize bytes each can still lie in the reader's
/// region. A count that cannot is the mark of damaged or hostile bytes.
CMDDATA_API bool CountFits(const CCmdReader& reader, std::uint32_t count,
                           std::uint32_t minItemSize);
/// Runs the reader to the end of its region with kPastEnd, so that every later transfer of the
/// enclosing object fails too and the caller's final GetLastError() reports the damage.
CMDDATA_API void Exhaust(CCmdReader& reader);

/// Smallest wire size of T, measured once per class.
template <class T>
std::uint32_t MinWireSize() {
    static const std::uint32_t size = [] {
        T scratch;
        return MinimalWireSize(scratch);
    }();
    return size;
}
}  // namespace detail
}  // namespace cmddata

/// An ordered list of owned T records: version prefix, u32 count, then each item's own form.
///
/// Copy construction shares the source's nodes (right after a copy both lists hold the very same
/// items). The nodes are reference-counted as one chain, so either list may be destroyed or
/// emptied first; a list that changes its shared chain (AddTail, RemoveAt) first takes a copy of
/// it for itself, leaving the other list as it was. Assignment copies deeply.
///
/// Reading is linear in the item count. A count that the bytes left in the region could not hold
/// (count x the smallest wire size of T) is not allocated for: the list stays empty and the
/// reader is run to its end with kPastEnd. Every count that could fit is read as written: all
/// count items are created and read even after a transfer has failed.
template <class T>
class CCmdList : public CCmdCore {
    struct Node {
        Node* next;
        T item;
    };
    struct Chain {
        std::atomic<std::uint32_t> refs;
        Node* head;
        Node* tail;
        std::uint32_t count;
    };

public:
    CCmdList() = default;
    CCmdList(const CCmdList& other) : CCmdCore(other), chain_(other.chain_) {
        if (chain_ != nullptr) chain_->refs.fetch_add(1, std::memory_order_relaxed);
    }
    ~CCmdList() override { Release(); }

    /// Deep copy, item by item with T's assignment; this list's version and reserved word stay.
    /// Assigning a list to itself changes nothing.
    void operator=(const CCmdList& source) {
        if (&source == this) return;
        Chain* keep = source.chain_;  // source may share our chain; hold it while we let go
        if (keep != nullptr) keep->refs.fetch_add(1, std::memory_order_relaxed);
        Release();
        for (Node* n = keep != nullptr ? keep->head : nullptr; n != nullptr; n = n->next)
            GetAt(AddTail()) = n->item;
        ReleaseChain(keep);
    }

    /// Appends a default T; returns its index.
    std::uint32_t AddTail() {
        Node* node = Append();
        return node != nullptr ? chain_->count - 1 : 0;
    }
    /// Appends a copy of item (T's assignment); returns its index.
    std::uint32_t AddTail(const T& item) {
        const std::uint32_t index = AddTail();
        if (chain_ != nullptr && chain_->tail != nullptr) chain_->tail->item = item;
        return index;
    }

    /// Item index; an index of 0 or past the end yields the first item. On an empty list the
    /// result is a shared default placeholder, not an item: callers check GetCount() first.
    T& GetAt(std::uint32_t index) const {
        if (chain_ == nullptr || chain_->head == nullptr) return Placeholder();
        Node* node = chain_->head;
        if (index < chain_->count)
            for (std::uint32_t i = 0; i < index; ++i) node = node->next;
        return node->item;
    }
    T& operator[](std::uint32_t index) const { return GetAt(index); }

    std::uint32_t GetCount() const { return chain_ != nullptr ? chain_->count : 0; }
    bool IsEmpty() const { return GetCount() == 0; }

    /// Removes item index; false (nothing changed) when index is past the end.
    bool RemoveAt(std::uint32_t index) {
        if (chain_ == nullptr || chain_->head == nullptr || index >= chain_->count) return false;
        if (!Unshare()) return false;
        Chain& c = *chain_;
        c.count -= 1;
        Node* victim = c.head;
        if (index == 0) {
            c.head = victim->next;
            if (c.tail == victim) c.tail = nullptr;
        } else {
            Node* before = c.head;
            for (std::uint32_t i = 1; i < index; ++i) before = before->next;
            victim = before->next;
            before->next = victim->next;
            if (c.tail == victim) c.tail = before;
        }
        Destroy(victim);
        return true;
    }

    /// Visits each item, head to tail, in linear time.
    template <class F>
    void ForEach(F&& visit) const {
        for (Node* n = chain_ != nullptr ? chain_->head : nullptr; n != nullptr; n = n->next)
            visit(n->item);
    }

    void RemoveAll() override { Release(); }

    void Read(CCmdReader& reader) override {
        ReadWith(
            reader, [](std::uint32_t, bool) {}, [&reader](T& item) { reader.Read(&item); });
    }
    void Write(CCmdWriter& writer) override {
        WriteWith(writer, [&writer](T& item) { writer.Write(&item); });
    }
    void Visit(cmddata::FieldProcessor& p) override { p.List(nullptr, *this); }
    static const char* TypeName() { return "CCmdList"; }
    using ItemType = T;

    /// The list's reading algorithm with the item transfer left to the caller: prefix, empty
    /// the list, count, the count check, then count items.
    template <class OnCount, class OnItem>
    void ReadWith(CCmdReader& reader, OnCount&& onCount, OnItem&& onItem) {
        CCmdCore::Read(reader);
        Release();
        std::uint32_t count = 0;  // stays 0 when the transfer moves nothing
        reader.Read(&count, 4);
        const bool fits =
            cmddata::detail::CountFits(reader, count, cmddata::detail::MinWireSize<T>());
        onCount(count, fits);
        if (!fits) {
            cmddata::detail::Exhaust(reader);
            return;
        }
        for (std::uint32_t i = 0; i < count; ++i) {
            Node* node = Append();
            if (node == nullptr) {  // out of memory: stop, and make the failure visible
                cmddata::detail::Exhaust(reader);
                return;
            }
            onItem(node->item);
        }
    }
    /// The list's writing algorithm with the item transfer left to the caller.
    template <class OnItem>
    void WriteWith(CCmdWriter& writer, OnItem&& onItem) {
        CCmdCore::Write(writer);
        std::uint32_t count = GetCount();
        writer.Write(&count, 4);
        ForEach(onItem);
    }

private:
    static T& Placeholder() {
        static T placeholder;
        return placeholder;
    }
    static void Destroy(Node* node) {
        node->~Node();
        ::operator delete(node, std::nothrow);
    }
    static void ReleaseChain(Chain* chain) {
        if (chain == nullptr || chain->refs.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
        for (Node* n = chain->head; n != nullptr;) {
            Node* next = n->next;
            Destroy(n);
            n = next;
        }
        delete chain;
    }
    void Release() {
        ReleaseChain(chain_);
        chain_ = nullptr;
    }
    // Makes the chain this list's own before it changes (copy-on-write of shared nodes).
    bool Unshare() {
        if (chain_ == nullptr || chain_->refs.load(std::memory_order_acquire) == 1) return true;
        Chain* shared = chain_;
        chain_ = nullptr;
        for (Node* n = shared->head; n != nullptr; n = n->next) {
            Node* copy = Append();
            if (copy == nullptr) break;
            copy->item = n->item;
        }
        ReleaseChain(shared);
        return chain_ != nullptr || shared == nullptr;
    }
    Node* Append() {
        if (chain_ == nullptr) {
            chain_ = new (std::nothrow) Chain{{1}, nullptr, nullptr, 0};
            if (chain_ == nullptr) return nullptr;
        } else if (!Unshare()) {
            return nullptr;
        }
        void* raw = ::operator new(sizeof(Node), std::nothrow);
        if (raw == nullptr) return nullptr;
        Node* node = new (raw) Node{nullptr, T()};
        if (chain_->tail != nullptr)
            chain_->tail->next = node;
        else
            chain_->head = node;
        chain_->tail = node;
        chain_->count += 1;
        return node;
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
    std::uint32_t ItemBytes() const override { return sizeof(U) + sizeof(void*); }
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
