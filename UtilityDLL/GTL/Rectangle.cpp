#include "UtilityDLL/GTL/Rectangle.h"

template class GTL::Rectangle<GTL::Point2D<int>>;
template class GTL::Rectangle<GTL::Point2D<float>>;
template class GTL::Rectangle<GTL::Point2D<double>>;
