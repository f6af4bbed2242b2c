#pragma once

#include <glib-object.h>
#include <memory>

struct GObjectUnref
{
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// One reference on a GObject.
template<class T>
using GObjectPtr = std::unique_ptr<T, GObjectUnref>;
