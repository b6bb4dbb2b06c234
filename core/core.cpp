// The root class and the streams.
#include "cmddata/core/core.h"

#include "cmddata_internal/procs.h"
#include "cmddata/core/transfer.h"

using cmddata::Result;
namespace result = cmddata::result;
using cmddata::detail::Access;

void CCmdCore::Read(CCmdReader& reader) {
    cmddata::detail::ViaReader x{reader};
    cmddata::detail::ReadPrefix(*this, x);
}

void CCmdCore::Write(CCmdWriter& writer) {
    cmddata::detail::ViaWriter x{writer};
    cmddata::detail::WritePrefix(*this, x);
}

void CCmdCore::RemoveAll() {}

void CCmdCore::Visit(cmddata::FieldProcessor& p) { p.Prefix(*this); }

void CCmdStreamBase::Attach(cmddata::platform::MappingHandle mapping, std::uint32_t size) {
    std::size_t viewSize = 0;
    unsigned char* view = cmddata::platform::MapWholeView(mapping, &viewSize);
    // One view per mapping, never unmapped: no stream owns it, and every stream shares it.
    AttachView(view, viewSize < size ? static_cast<std::uint32_t>(viewSize) : size);
}

Result CCmdReader::Read(void* destination, std::int32_t count) {
    return cmddata::detail::OnStream(
        *this, [&](auto& c) { return cmddata::detail::ReadRaw(c, destination, count); });
}

Result CCmdWriter::Write(const void* source, std::int32_t count) {
    return cmddata::detail::OnStream(
        *this, [&](auto& c) { return cmddata::detail::WriteRaw(c, source, count); });
}

namespace cmddata {

const char* ResultName(Result code) {
    switch (code) {
        case result::kOk:
            return "success";
        case result::kBadArgument:
            return "bad argument";
        case result::kOutOfMemory:
            return "out of memory";
        case result::kPastEnd:
            return "past the end of the region";
        case result::kNotAttached:
            return "stream not attached";
        case result::kVerifyFailed:
            return "verification compare failed";
        case result::kNullOutput:
            return "null output pointer";
        case result::kItemMissing:
            return "item missing or text rejected";
        case result::kAccessorOutOfMemory:
            return "out of memory for a copy";
        default:
            return "unknown result";
    }
}

namespace detail {

bool CountFits(const CCmdReader& reader, std::uint32_t count, std::uint32_t minItemSize) {
    return Cursor::Of(const_cast<CCmdReader&>(reader)).Fits(count, minItemSize);
}

void Exhaust(CCmdReader& reader) {
    Cursor c = Cursor::Of(reader);
    c.Exhaust();
    c.To(reader);
}

}  // namespace detail
}  // namespace cmddata

// What the wire and the fixed object images rest on, checked where the library is compiled: the
// fixed widths, and for a cross build the pointer width its toolchain is for (the 32-bit Windows
// DLL must be built for 4-byte pointers). The images themselves are fixed-width structures with
// their sizes and offsets asserted beside them (cmddata_internal/frz_frm_image.h), the same on
// every platform.
static_assert(sizeof(std::uint8_t) == 1 && sizeof(std::uint16_t) == 2 &&
                  sizeof(std::uint32_t) == 4 && sizeof(std::uint64_t) == 8,
              "the wire widths are fixed");
#ifdef CMDDATA_POINTER_BYTES
static_assert(sizeof(void*) == CMDDATA_POINTER_BYTES,
              "this build's compiler targets another pointer width than its toolchain names");
#endif
