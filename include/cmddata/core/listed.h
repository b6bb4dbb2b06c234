// Which classes the family class lists name: CMDDATA_FIELDS checks its class against this, so a
// class left out of its family's list stops the build instead of going untested and unseen.
#pragma once

#define CMDDATA_RECORD(Class) class Class;
#define CMDDATA_LAYOUT(Class) class Class;
#define CMDDATA_MESSAGES(Command) \
    class C##Command##Snd;        \
    class C##Command##Rcv;
#include "cmddata/classes.def"
#undef CMDDATA_RECORD
#undef CMDDATA_LAYOUT
#undef CMDDATA_MESSAGES

namespace cmddata {
namespace detail {

template <class T>
inline constexpr bool kListed = false;

#define CMDDATA_RECORD(Class) \
    template <>               \
    inline constexpr bool kListed<::Class> = true;
#define CMDDATA_LAYOUT(Class) CMDDATA_RECORD(Class)
#define CMDDATA_MESSAGES(Command) CMDDATA_RECORD(C##Command##Snd) CMDDATA_RECORD(C##Command##Rcv)
#include "cmddata/classes.def"
#undef CMDDATA_RECORD
#undef CMDDATA_LAYOUT
#undef CMDDATA_MESSAGES

}  // namespace detail
}  // namespace cmddata

/// For a class outside the library (a test's or a tool's own) that uses the field-list macros:
/// at global scope, after a declaration of the class and before its definition.
#define CMDDATA_UNLISTED(Class) \
    template <>                 \
    inline constexpr bool cmddata::detail::kListed<Class> = true;
