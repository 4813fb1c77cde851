#include "UtilityDLL/GTL/GeoPrimitive.h"

template class GTL::GeoPrimitiveBase<GTL::Point2D<int>>;
template class GTL::GeoPrimitiveBase<GTL::Point2D<float>>;
template class GTL::GeoPrimitiveBase<GTL::Point2D<double>>;
template class GTL::GeoPrimitive<GTL::Point2D<int>, 4>;
template class GTL::GeoPrimitive<GTL::Point2D<float>, 4>;
template class GTL::GeoPrimitive<GTL::Point2D<double>, 4>;
