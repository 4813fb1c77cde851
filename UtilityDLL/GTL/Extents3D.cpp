#include "UtilityDLL/GTL/Extents3D.h"

template class GTL::Extents3D<float>;
template class GTL::Extents3D<double>;
