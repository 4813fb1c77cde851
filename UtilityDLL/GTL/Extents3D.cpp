// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Extents3D.h"

GTL_TEMPLATE(GTL::Extents3D<float>);
GTL_TEMPLATE(GTL::Extents3D<double>);
