// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/GDIScaleFactor.h"

constinit const GDIScaleFactor GDIScaleFactor::m_instance;
