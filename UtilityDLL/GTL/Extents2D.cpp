#include "UtilityDLL/GTL/Extents2D.h"

template class GTL::Extents2D<float>;
template class GTL::Extents2D<double>;
