#pragma once

#include "addin/libraries/lexmgr/LexMgr.h"

namespace lexmgr {

/// Measures the main screen once, when it is made. Without a screen it has 96 dots per inch.
class DpiHelper : public CDPIHelper {
public:
    DpiHelper();

    int getDesiredBitmapImageSize(e_arkImageUseType useType, int size) const override;
    int scaleX(int value) const override;

private:
    double m_dotsPerInch;
};

} // namespace lexmgr
