#include "UtilityDLL/GTL/Point3D.h"

template class GTL::Point3D<float>;
template class GTL::Point3D<double>;
