#include "UtilityDLL/GTL/Vector2D.h"

template class GTL::Vector2D<int>;
template class GTL::Vector2D<float>;
template class GTL::Vector2D<double>;
