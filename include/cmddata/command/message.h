// The base every message class names its command through: the identifier, the constructor's
// version rule and the framing all come from the catalogue, so a message is its members and its
// field list.
//
//     class CMDDATA_API CGetVINRcv : public CCmdRcv<cmddata::command::GetVIN> {
//     public:
//         CMDDATA_MESSAGE(CGetVINRcv)
//         CCmdString vin;
//     };
//
// and in the family's source:
//
//     template <class P> void CGetVINRcv::Fields(P& p) {
//         Header(p);              // the framing of this command and side, from the catalogue
//         p.String("vin", vin);
//     }
//     CMDDATA_DEFINE_FIELDS(CGetVINRcv)
#pragma once

#include <cstddef>
#include <cstdint>

#include "cmddata/command/catalogue.h"
#include "cmddata/command/header.h"
#include "cmddata/core/fields.h"

namespace cmddata {
namespace detail {

/// The header part of a message: the identifier, the version its constructor gives and the
/// framing, for command C on side S. Layout is the class that carries the fields (CCmdBase, or a
/// layout shared by several commands); it takes (identifier, version, reserved word).
template <std::size_t C, Side S, class Layout>
class MessageHead : public Layout {
    static_assert(C < kCommandCount, "the command must be one of the catalogue");

public:
    static constexpr const CommandInfo& kCommand = kCommands[C];
    static constexpr VersionRule kRule = kCommands[C].Rule(S);
    static constexpr Framing kFraming = kCommands[C].FramingOf(S);
    static_assert(kRule != VersionRule::kDerived,
                  "a derived command is declared with CMDDATA_DERIVED_COMMAND over its base "
                  "command's class");

protected:
    explicit MessageHead(std::uint16_t version) : Layout(kCommand.id, version, 0) {
        this->framing_ = kFraming;
    }
};

}  // namespace detail
}  // namespace cmddata

/// The base of a message of command C (a cmddata::command:: name) on side S, carried by Layout.
/// Its constructor follows the catalogue's rule for that side: no argument (version 1 or 2), a
/// version argument with default 1, 2 or 3, or a version argument taken and ignored (always 1).
template <std::size_t C, cmddata::Side S, class Layout = CCmdBase,
          cmddata::VersionRule R = cmddata::kCommands[C].Rule(S)>
class CCmdMessage : public cmddata::detail::MessageHead<C, S, Layout> {
public:
    using CmdMessageBase = CCmdMessage;
    CCmdMessage() : cmddata::detail::MessageHead<C, S, Layout>(1) {}
};

template <std::size_t C, cmddata::Side S, class Layout>
class CCmdMessage<C, S, Layout, cmddata::VersionRule::kFixed2>
    : public cmddata::detail::MessageHead<C, S, Layout> {
public:
    using CmdMessageBase = CCmdMessage;
    CCmdMessage() : cmddata::detail::MessageHead<C, S, Layout>(2) {}
};

namespace cmddata {
namespace detail {
/// The head of a message whose constructor takes the version, with the rule's default.
template <std::size_t C, Side S, class Layout, VersionRule R>
class VersionedHead : public MessageHead<C, S, Layout> {
public:
    explicit VersionedHead(std::uint16_t version = DefaultVersion(R))
        : MessageHead<C, S, Layout>(version) {}
};
}  // namespace detail
}  // namespace cmddata

template <std::size_t C, cmddata::Side S, class Layout>
class CCmdMessage<C, S, Layout, cmddata::VersionRule::kArg1>
    : public cmddata::detail::VersionedHead<C, S, Layout, cmddata::VersionRule::kArg1> {
public:
    using CmdMessageBase = CCmdMessage;
    using cmddata::detail::VersionedHead<C, S, Layout, cmddata::VersionRule::kArg1>::VersionedHead;
};

template <std::size_t C, cmddata::Side S, class Layout>
class CCmdMessage<C, S, Layout, cmddata::VersionRule::kArg2>
    : public cmddata::detail::VersionedHead<C, S, Layout, cmddata::VersionRule::kArg2> {
public:
    using CmdMessageBase = CCmdMessage;
    using cmddata::detail::VersionedHead<C, S, Layout, cmddata::VersionRule::kArg2>::VersionedHead;
};

template <std::size_t C, cmddata::Side S, class Layout>
class CCmdMessage<C, S, Layout, cmddata::VersionRule::kArg3>
    : public cmddata::detail::VersionedHead<C, S, Layout, cmddata::VersionRule::kArg3> {
public:
    using CmdMessageBase = CCmdMessage;
    using cmddata::detail::VersionedHead<C, S, Layout, cmddata::VersionRule::kArg3>::VersionedHead;
};

/// The argument is kept so that callers' code compiles as it always did; the header is version 1
/// whatever is passed.
template <std::size_t C, cmddata::Side S, class Layout>
class CCmdMessage<C, S, Layout, cmddata::VersionRule::kIgnored1>
    : public cmddata::detail::MessageHead<C, S, Layout> {
public:
    using CmdMessageBase = CCmdMessage;
    explicit CCmdMessage(std::uint16_t /*ignored*/ = 1)
        : cmddata::detail::MessageHead<C, S, Layout>(1) {}
};

/// The send message base of command C.
template <std::size_t C, class Layout = CCmdBase>
using CCmdSnd = CCmdMessage<C, cmddata::Side::kSend, Layout>;
/// The receive message base of command C.
template <std::size_t C, class Layout = CCmdBase>
using CCmdRcv = CCmdMessage<C, cmddata::Side::kReceive, Layout>;

/// Declares a message with a field list of its own (see CMDDATA_FIELDS); its constructors are
/// its base's, as the catalogue's rule gives them.
#define CMDDATA_MESSAGE(Class)            \
    using CmdMessageBase::CmdMessageBase; \
    CMDDATA_FIELDS(Class)

/// Declares a message whose fields are its layout's.
#define CMDDATA_MESSAGE_LAYOUT(Class)     \
    using CmdMessageBase::CmdMessageBase; \
    CMDDATA_SAME_LAYOUT(Class)

/// A derived command: Class is Base (the class of the same side of the base command) under the
/// identifier of Command. Its constructor runs Base's, then puts its own identifier in place and
/// empties the object; reading, writing and emptying are Base's.
#define CMDDATA_DERIVED_COMMAND(Class, Base, Command)                            \
    class CMDDATA_API Class : public Base {                                      \
        static_assert(cmddata::kCommands[cmddata::command::Command].IsDerived(), \
                      #Command " is not a derived command of the catalogue");    \
                                                                                 \
    public:                                                                      \
        Class() {                                                                \
            cmdId_ = cmddata::kCommands[cmddata::command::Command].id;           \
            RemoveAll();                                                         \
        }                                                                        \
        CMDDATA_SAME_LAYOUT(Class)                                               \
    }
