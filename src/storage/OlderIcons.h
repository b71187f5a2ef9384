#pragma once

#include <array>
#include <string_view>

namespace tallyvane {

/// The icon names of older data; the position is the icon's number.
inline constexpr std::array<std::string_view, 12> olderIconNames = {
    "bill_home.png",     "bill_pad.png",      "bill_card2.png",     "bill_car.png",
    "bill_phone.png",    "bill_medical.png",  "bill_insurance.png", "bill_store.png",
    "bill_personal.png", "bill_business.png", "bill_mail.png",      "bill_internet.png"};

}  // namespace tallyvane
