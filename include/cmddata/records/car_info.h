// Vehicle information items and the accessors that turn their texts into numbers.
#pragma once

#include <cstdint>
#include <type_traits>

#include "cmddata/core/buffer.h"
#include "cmddata/core/fields.h"
#include "cmddata/core/list.h"
#include "cmddata/core/scalar.h"

/// One item of vehicle information: item id (1 car information code, 2 engine type, 3 model
/// year, others passed through) and its 16-bit text.
class CMDDATA_API CCmdCarInfo : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCarInfo)
    CCmdCarInfo() = default;
    std::uint16_t itemId = 0;
    CCmdString text;
};

/// One entry of the car-identification option list: an identifier and its list of word ids.
/// Same shape as CCmdCarInfo, with the id list where the text stands.
class CMDDATA_API CCmdCarIdInf : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdCarIdInf)
    CCmdCarIdInf() = default;
    std::uint16_t itemId = 0;
    CCmdList<CCmdWordId> ids;
};

namespace cmddata {

/// Vehicle information item ids the numeric accessors read.
namespace car_item {
constexpr std::uint16_t kCarInfoCode = 1;
constexpr std::uint16_t kEngineType = 2;
constexpr std::uint16_t kModelYear = 3;
}  // namespace car_item

// The accessors as one routine each over a list of items; the receive messages that carry
// vehicle information call them through CCmdCarInfoAccess. Outputs are written only on success.

/// The text of the first item with this id (compared as 16 bits). kNullOutput for a null text,
/// kItemMissing for an empty list or no such item. The pointer stays owned by the list.
CMDDATA_API Result GetCarInfoText(const CCmdList<CCmdCarInfo>& items, const std::uint16_t** text,
                                  std::uint32_t itemId);
/// Item 1's first seven narrow characters packed big-endian into two words (low byte 0).
CMDDATA_API Result GetCarInfoDwords(const CCmdList<CCmdCarInfo>& items, std::uint32_t* high,
                                    std::uint32_t* low);
/// Item 2's first six narrow characters packed big-endian into two words (low 16 bits 0).
CMDDATA_API Result GetEngineTypeDwords(const CCmdList<CCmdCarInfo>& items, std::uint32_t* high,
                                       std::uint32_t* low);
/// Item 3 (one to four decimal digits) as a number.
CMDDATA_API Result GetModelYear(const CCmdList<CCmdCarInfo>& items, std::uint32_t* year);

namespace detail {
template <class T, class = void>
struct HasCarInfo : std::false_type {};
template <class T>
struct HasCarInfo<T, std::void_t<decltype(std::declval<const T&>().carInfo)>>
    : std::is_same<std::decay_t<decltype(std::declval<const T&>().carInfo)>,
                   CCmdList<CCmdCarInfo>> {};
}  // namespace detail

}  // namespace cmddata

/// Gives a receive message the four vehicle-information accessors over its public member
/// `CCmdList<CCmdCarInfo> carInfo`. Holds nothing; derive as `public CCmdCarInfoAccess<Self>`.
template <class Derived>
class CCmdCarInfoAccess {
public:
    cmddata::Result Get(const std::uint16_t** text, std::uint32_t itemId) const {
        return cmddata::GetCarInfoText(Items(), text, itemId);
    }
    cmddata::Result GetDwordCarInfo(std::uint32_t* high, std::uint32_t* low) const {
        return cmddata::GetCarInfoDwords(Items(), high, low);
    }
    cmddata::Result GetDwordEngineType(std::uint32_t* high, std::uint32_t* low) const {
        return cmddata::GetEngineTypeDwords(Items(), high, low);
    }
    cmddata::Result GetDwordModelYear(std::uint32_t* year) const {
        return cmddata::GetModelYear(Items(), year);
    }

protected:
    CCmdCarInfoAccess() = default;
    CCmdCarInfoAccess(const CCmdCarInfoAccess&) = default;
    CCmdCarInfoAccess& operator=(const CCmdCarInfoAccess&) = default;
    ~CCmdCarInfoAccess() = default;

private:
    const CCmdList<CCmdCarInfo>& Items() const {
        static_assert(
            cmddata::detail::HasCarInfo<Derived>::value,
            "CCmdCarInfoAccess<T> needs a public member `CCmdList<CCmdCarInfo> carInfo` in T");
        return static_cast<const Derived&>(*this).carInfo;
    }
};
