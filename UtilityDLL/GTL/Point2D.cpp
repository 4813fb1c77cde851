#include "UtilityDLL/GTL/Point2D.h"

template class GTL::Point2D<int>;
template class GTL::Point2D<float>;
template class GTL::Point2D<double>;
