#pragma once

#include <QtGlobal>

#ifdef CONTROLKIT_BUILD
#define CONTROLKIT_API Q_DECL_EXPORT
#else
#define CONTROLKIT_API Q_DECL_IMPORT
#endif
