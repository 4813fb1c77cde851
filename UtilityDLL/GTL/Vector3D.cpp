#include "UtilityDLL/GTL/Vector3D.h"

template class GTL::Vector3D<float>;
template class GTL::Vector3D<double>;
