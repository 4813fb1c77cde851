// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/GeoPrimitive.h"

GTL_TEMPLATE(GTL::GeoPrimitiveBase<GTL::Point2D<int>>);
GTL_TEMPLATE(GTL::GeoPrimitiveBase<GTL::Point2D<float>>);
GTL_TEMPLATE(GTL::GeoPrimitiveBase<GTL::Point2D<double>>);
GTL_TEMPLATE(GTL::GeoPrimitive<GTL::Point2D<int>, 4>);
GTL_TEMPLATE(GTL::GeoPrimitive<GTL::Point2D<float>, 4>);
GTL_TEMPLATE(GTL::GeoPrimitive<GTL::Point2D<double>, 4>);
