// The colours that the samples are made of.
#pragma once

#include "gsRGB.h"

namespace colours {

inline gsRGB const cream{240, 228, 206};
inline gsRGB const sand{216, 190, 150};
inline gsRGB const ochre{218, 162, 70};
inline gsRGB const terracotta{196, 98, 66};
inline gsRGB const brick{146, 60, 50};
inline gsRGB const plum{112, 62, 88};
inline gsRGB const slate{78, 102, 128};
inline gsRGB const teal{42, 122, 118};
inline gsRGB const sage{142, 166, 130};
inline gsRGB const charcoal{58, 60, 66};
inline gsRGB const white{255, 255, 255};

} // namespace colours
