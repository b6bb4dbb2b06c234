// The class table, expanded once from the family class lists; it sits above every family. It also
// defines the listed check (cmddata_internal/listed.h) for each class of the lists, and only for
// them.
#include "cmddata/table/classes.h"

#include <memory>
#include <new>
#include <type_traits>

#include "cmddata/cmddata.h"
#include "cmddata/core/json.h"
#include "cmddata_internal/listed.h"

namespace cmddata {

namespace detail {
template <class T>
void ListedInItsFamilyList() {}

#define CMDDATA_RECORD(Class) template void ListedInItsFamilyList<::Class>();
#define CMDDATA_LAYOUT(Class) CMDDATA_RECORD(Class)
#define CMDDATA_MESSAGES(Command) CMDDATA_RECORD(C##Command##Snd) CMDDATA_RECORD(C##Command##Rcv)
#include "cmddata/classes.def"
#undef CMDDATA_RECORD
#undef CMDDATA_LAYOUT
#undef CMDDATA_MESSAGES
}  // namespace detail

namespace {

template <class T>
CCmdCore* Make(std::uint16_t version) {
    if constexpr (std::is_constructible_v<T, std::uint32_t, std::uint16_t, std::uint16_t>)
        return new (std::nothrow) T(0, version, 0);  // a shared layout: identifier 0
    else if constexpr (std::is_constructible_v<T, std::uint16_t>)
        return new (std::nothrow) T(version);
    else
        return new (std::nothrow) T();
}

template <class T>
CCmdCore* MakeDefault() {
    if constexpr (std::is_default_constructible_v<T>)
        return new (std::nothrow) T();
    else
        return Make<T>(1);
}

template <class T>
CCmdCore* Copy(const CCmdCore& source) {
    return new (std::nothrow) T(static_cast<const T&>(source));
}

// Some assignments take a non-const source, as the classes were given them.
template <class T>
void Assign(CCmdCore& target, const CCmdCore& source) {
    static_cast<T&>(target) = const_cast<T&>(static_cast<const T&>(source));
}

template <class T>
constexpr bool TakesVersion() {
    return std::is_constructible_v<T, std::uint16_t> ||
           std::is_constructible_v<T, std::uint32_t, std::uint16_t, std::uint16_t>;
}

template <class T>
constexpr ClassInfo Entry(const char* family, ClassKind kind, const CommandInfo* command,
                          Side side) {
    return {T::TypeName(), family,   kind,       command,         side, TakesVersion<T>(), false,
            &Make<T>,      &Copy<T>, &Assign<T>, &MakeDefault<T>, 1};
}

constexpr std::size_t kClassCount = 0
#define CMDDATA_RECORD(Class) +1
#define CMDDATA_LAYOUT(Class) +1
#define CMDDATA_MESSAGES(Command) +2
#include "cmddata/classes.def"
#undef CMDDATA_RECORD
#undef CMDDATA_LAYOUT
#undef CMDDATA_MESSAGES
    ;

struct Table {
    ClassInfo entries[kClassCount];
    std::size_t count = 0;

    Table() {
        const char* family = "";
        const auto add = [this](const ClassInfo& info) { entries[count++] = info; };
#define CMDDATA_FAMILY(Name, Title) family = Title;
#define CMDDATA_RECORD(Class) add(Entry<::Class>(family, ClassKind::kRecord, nullptr, Side::kSend));
#define CMDDATA_LAYOUT(Class) add(Entry<::Class>(family, ClassKind::kLayout, nullptr, Side::kSend));
#define CMDDATA_MESSAGES(Command)                                                           \
    add(Entry<::C##Command##Snd>(family, ClassKind::kMessage, &kCommands[command::Command], \
                                 Side::kSend));                                             \
    add(Entry<::C##Command##Rcv>(family, ClassKind::kMessage, &kCommands[command::Command], \
                                 Side::kReceive));
#include "cmddata/classes.def"
#undef CMDDATA_FAMILY
#undef CMDDATA_RECORD
#undef CMDDATA_LAYOUT
#undef CMDDATA_MESSAGES
        // Derived from each field list: a scratch object traced reading and writing.
        for (std::size_t i = 0; i < count; ++i) {
            std::unique_ptr<CCmdCore> scratch(entries[i].make(1));
            entries[i].crossed = scratch != nullptr && CrossesFields(*scratch);
            std::unique_ptr<CCmdCore> plain(entries[i].makeDefault());
            if (plain != nullptr) entries[i].defaultVersion = plain->GetVersion();
        }
    }
};

const Table& TheTable() {
    static const Table table;
    return table;
}

}  // namespace

const ClassInfo* Classes(std::size_t* count) {
    const Table& table = TheTable();
    if (count != nullptr) *count = table.count;
    return table.entries;
}

const ClassInfo* FindClass(std::string_view name) {
    std::size_t count = 0;
    const ClassInfo* all = Classes(&count);
    for (std::size_t i = 0; i < count; ++i)
        if (name == all[i].name) return &all[i];
    return nullptr;
}

const ClassInfo* FindMessageClass(const CommandInfo& command, Side side) {
    std::size_t count = 0;
    const ClassInfo* all = Classes(&count);
    for (std::size_t i = 0; i < count; ++i)
        // By name: each module that includes the catalogue may hold a copy of it of its own.
        if (all[i].command != nullptr && all[i].side == side &&
            std::string_view(all[i].command->name) == command.name)
            return &all[i];
    return nullptr;
}

CCmdCore* MakeFromJson(const ClassInfo& cls, std::uint16_t version, std::string_view text,
                       std::string* error) {
    std::unique_ptr<CCmdCore> object(cls.make(version));
    if (object == nullptr) {
        if (error != nullptr) *error = "out of memory";
        return nullptr;
    }
    object->RemoveAll();
    if (!FromJson(*object, text, error)) return nullptr;
    return object.release();
}

std::uint32_t FillSeed(const CommandInfo& command, Side side) {
    // By position in the catalogue; kCommands is the library's own copy.
    std::uint32_t position = 0;
    while (position < kCommandCount && std::string_view(kCommands[position].name) != command.name)
        ++position;
    return 1 + 2 * position + (side == Side::kReceive ? 1 : 0);
}

}  // namespace cmddata
