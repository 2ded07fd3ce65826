// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/locale_info.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

struct DiallingCode {
  QLocale::Territory country;
  int code;
};

// ITU-T E.164 assigned country codes.
constexpr std::array kDiallingCodes = {
    DiallingCode{QLocale::Argentina, 54},     DiallingCode{QLocale::Australia, 61},
    DiallingCode{QLocale::Austria, 43},       DiallingCode{QLocale::Belarus, 375},
    DiallingCode{QLocale::Belgium, 32},       DiallingCode{QLocale::Brazil, 55},
    DiallingCode{QLocale::Bulgaria, 359},     DiallingCode{QLocale::Canada, 1},
    DiallingCode{QLocale::Chile, 56},         DiallingCode{QLocale::China, 86},
    DiallingCode{QLocale::Colombia, 57},      DiallingCode{QLocale::Croatia, 385},
    DiallingCode{QLocale::Cyprus, 357},       DiallingCode{QLocale::Czechia, 420},
    DiallingCode{QLocale::Denmark, 45},       DiallingCode{QLocale::Egypt, 20},
    DiallingCode{QLocale::Estonia, 372},      DiallingCode{QLocale::Finland, 358},
    DiallingCode{QLocale::France, 33},        DiallingCode{QLocale::Germany, 49},
    DiallingCode{QLocale::Greece, 30},        DiallingCode{QLocale::HongKong, 852},
    DiallingCode{QLocale::Hungary, 36},       DiallingCode{QLocale::Iceland, 354},
    DiallingCode{QLocale::India, 91},         DiallingCode{QLocale::Indonesia, 62},
    DiallingCode{QLocale::Ireland, 353},      DiallingCode{QLocale::Israel, 972},
    DiallingCode{QLocale::Italy, 39},         DiallingCode{QLocale::Japan, 81},
    DiallingCode{QLocale::Latvia, 371},       DiallingCode{QLocale::Lithuania, 370},
    DiallingCode{QLocale::Luxembourg, 352},   DiallingCode{QLocale::Malaysia, 60},
    DiallingCode{QLocale::Mexico, 52},        DiallingCode{QLocale::Netherlands, 31},
    DiallingCode{QLocale::NewZealand, 64},    DiallingCode{QLocale::Norway, 47},
    DiallingCode{QLocale::Poland, 48},        DiallingCode{QLocale::Portugal, 351},
    DiallingCode{QLocale::Romania, 40},       DiallingCode{QLocale::Russia, 7},
    DiallingCode{QLocale::SaudiArabia, 966},  DiallingCode{QLocale::Serbia, 381},
    DiallingCode{QLocale::Singapore, 65},     DiallingCode{QLocale::Slovakia, 421},
    DiallingCode{QLocale::Slovenia, 386},     DiallingCode{QLocale::SouthAfrica, 27},
    DiallingCode{QLocale::SouthKorea, 82},    DiallingCode{QLocale::Spain, 34},
    DiallingCode{QLocale::Sweden, 46},        DiallingCode{QLocale::Switzerland, 41},
    DiallingCode{QLocale::Taiwan, 886},       DiallingCode{QLocale::Thailand, 66},
    DiallingCode{QLocale::Turkey, 90},        DiallingCode{QLocale::Ukraine, 380},
    DiallingCode{QLocale::UnitedKingdom, 44}, DiallingCode{QLocale::UnitedStates, 1},
    DiallingCode{QLocale::Vietnam, 84},
};

QLocale OrAmerican(const QLocale& locale) {
  if (locale.language() != QLocale::C) return locale;
  return QLocale(QLocale::English, QLocale::UnitedStates);
}

}  // namespace

QLocale UserLocale() {
  return OrAmerican(QLocale());
}

void UseSystemLocale() {
  QLocale::setDefault(OrAmerican(QLocale::system()));
}

QString GetUserLocaleInfo(LocaleInfo type) {
  const QLocale locale = UserLocale();
  if (type == LocaleInfo::DecimalSeparator) {
    // Numbers are written with European digits everywhere, so a script's own sign never fits.
    return locale.decimalPoint() == ","_L1 ? u","_s : u"."_s;
  }
  const auto* found = std::ranges::find(kDiallingCodes, locale.territory(), &DiallingCode::country);
  return found == kDiallingCodes.end() ? QString() : QString::number(found->code);
}

}  // namespace zqm
