// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Vector2D.h"

GTL_TEMPLATE(GTL::Vector2D<int>);
GTL_TEMPLATE(GTL::Vector2D<float>);
GTL_TEMPLATE(GTL::Vector2D<double>);
