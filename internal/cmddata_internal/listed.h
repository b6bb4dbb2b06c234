// The check that a class with a field list is named in its family's class list (classes.def).
#pragma once

#include "cmddata/core/fields.h"

namespace cmddata {
namespace detail {

/// Defined by the class table (table/classes.cpp) for each class of the class lists, and for no
/// other. CMDDATA_DEFINE_FIELDS calls it, so a class left out of its family's list does not link:
/// the error names this function with the class, ListedInItsFamilyList<Class>(). Hidden, so that
/// the library itself does not link while one is missing, not only the programs that use it.
template <class T>
CMDDATA_LOCAL void ListedInItsFamilyList();

}  // namespace detail
}  // namespace cmddata

/// For a class outside the library (a test's own) that defines its field list with
/// CMDDATA_DEFINE_FIELDS: at global scope, after a declaration of the class.
#define CMDDATA_UNLISTED(Class) \
    template <>                 \
    inline void cmddata::detail::ListedInItsFamilyList<Class>() {}
