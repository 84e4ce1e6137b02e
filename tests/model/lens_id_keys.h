#pragma once

#include <array>

namespace test_support {

/// Where tests look for a lens's number, in this order.
inline constexpr std::array kLensIdKeys = {
    "Exif.CanonCs.LensType",      "Exif.Photo.LensModel",
    "Exif.Canon.LensModel",       "Exif.NikonLd1.LensIDNumber",
    "Exif.NikonLd2.LensIDNumber", "Exif.NikonLd3.LensIDNumber",
    "Exif.NikonLd4.LensID",       "Exif.NikonLd4.LensIDNumber",
    "Exif.Pentax.LensType",       "Exif.PentaxDng.LensType",
    "Exif.Minolta.LensID",        "Exif.SonyMinolta.LensID",
    "Exif.Sony1.LensID",          "Exif.Sony2.LensID",
    "Exif.Sony1.LensSpec",        "Exif.Sony2.LensSpec",
    "Exif.OlympusEq.LensType",    "Exif.Panasonic.LensType",
    "Exif.Samsung2.LensType",     "Exif.Photo.LensSpecification",
    "Exif.Nikon3.Lens",
};

}  // namespace test_support
