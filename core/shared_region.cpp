#include "cmddata/core/shared_region.h"

namespace cmddata {

namespace {
platform::RegionParts Empty() {
    platform::RegionParts parts{};
    parts.handle = platform::InvalidMapping();
    return parts;
}
bool NameIsPlain(const std::string& name) {
    if (name.empty() || name.size() > 60) return false;
    for (char c : name) {
        const bool ok = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                        (c >= '0' && c <= '9') || c == '_' || c == '-' || c == '.';
        if (!ok) return false;
    }
    return true;
}
}  // namespace

SharedRegion::SharedRegion() : parts_(Empty()) {}
SharedRegion::~SharedRegion() { Close(); }
void SharedRegion::Close() {
    if (parts_.view != nullptr || parts_.handle != platform::InvalidMapping())
        platform::CloseRegion(&parts_);
    parts_ = Empty();
}
SharedRegion::SharedRegion(SharedRegion&& other) noexcept : parts_(other.parts_) {
    other.parts_ = Empty();
}
SharedRegion& SharedRegion::operator=(SharedRegion&& other) noexcept {
    if (this != &other) {
        Close();
        parts_ = other.parts_;
        other.parts_ = Empty();
    }
    return *this;
}

SharedRegion SharedRegion::Create(std::uint32_t size) {
    SharedRegion region;
    if (!platform::CreateRegion(nullptr, size, &region.parts_)) region.parts_ = Empty();
    return region;
}

SharedRegion SharedRegion::CreateNamed(const std::string& name, std::uint32_t size) {
    SharedRegion region;
    if (!NameIsPlain(name) || !platform::CreateRegion(name.c_str(), size, &region.parts_))
        region.parts_ = Empty();
    return region;
}

SharedRegion SharedRegion::OpenNamed(const std::string& name) {
    SharedRegion region;
    if (!NameIsPlain(name) || !platform::OpenRegion(name.c_str(), &region.parts_))
        region.parts_ = Empty();
    return region;
}

}  // namespace cmddata
