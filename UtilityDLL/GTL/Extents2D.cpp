// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Extents2D.h"

GTL_TEMPLATE(GTL::Extents2D<float>);
GTL_TEMPLATE(GTL::Extents2D<double>);
