#pragma once

#include "model/VexaPropertyTreeItem.h"

/// Language of the node texts in a tree of this kind, "ENG" or "CH". Any thread.
QString propertyLanguage(ParentType eType);
bool isPropertyLanguageChinese(ParentType eType);
