#include "model/IVexaFeatureNotify.h"

void IVexaFeatureNotify::itemVisibleChanged(long, VexaPropertyTreeItem *, bool)
{
}
void IVexaFeatureNotify::itemExpandedChanged(long, VexaPropertyTreeItem *, bool)
{
}
void IVexaFeatureNotify::itemDataChanged(long, VexaPropertyTreeItem *, int, bool, bool)
{
}
void IVexaFeatureNotify::itemSpecialChanged(long, VexaPropertyTreeItem *, int)
{
}
void IVexaFeatureNotify::itemReadOnlyChanged(long, VexaPropertyTreeItem *, bool)
{
}
