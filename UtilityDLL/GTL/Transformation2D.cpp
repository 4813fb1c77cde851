#include "UtilityDLL/GTL/Transformation2D.h"

template class GTL::Transformation2D<GTL::Point2D<int>>;
template class GTL::Transformation2D<GTL::Point2D<float>>;
template class GTL::Transformation2D<GTL::Point2D<double>>;
