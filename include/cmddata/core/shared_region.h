// SharedRegion: the owner of a shared-memory mapping that two processes can use.
#pragma once

#include <cstdint>
#include <string>

#include "cmddata/platform/export.h"
#include "cmddata/platform/platform.h"

namespace cmddata {

/// Owns a shared-memory mapping object and this process's own view of it. Streams take
/// handle() and size(); data() is this object's view. Failures show as !IsValid(), never throw.
///
/// A named region's name belongs to its creator: on POSIX the creator removes the name when it
/// is destroyed (processes that opened it keep their mapping). Creating a name that exists
/// already fails on every platform, so two runs never share a region by accident.
class CMDDATA_API SharedRegion {
public:
    SharedRegion();
    ~SharedRegion();
    SharedRegion(SharedRegion&& other) noexcept;
    SharedRegion& operator=(SharedRegion&& other) noexcept;
    SharedRegion(const SharedRegion&) = delete;
    SharedRegion& operator=(const SharedRegion&) = delete;

    /// An anonymous region of size bytes, zero-filled.
    static SharedRegion Create(std::uint32_t size);
    /// A region that another process can open by name (letters, digits, '_', '-', '.').
    static SharedRegion CreateNamed(const std::string& name, std::uint32_t size);
    /// Opens a region created elsewhere; size() is the mapped size (page-rounded on Windows).
    static SharedRegion OpenNamed(const std::string& name);

    platform::MappingHandle handle() const { return parts_.handle; }
    std::uint32_t size() const { return static_cast<std::uint32_t>(parts_.size); }
    unsigned char* data() const { return parts_.view; }
    bool IsValid() const { return parts_.view != nullptr; }

private:
    void Close();
    platform::RegionParts parts_;
};

}  // namespace cmddata
