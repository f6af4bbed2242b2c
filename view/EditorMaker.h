#pragma once

#include <QString>

class QWidget;
class VexaPropertyTreeDelegate;
class VexaPropertyTreeItem;

/// Makes the editor of a cell, by element tag and feature name. GUI thread.
namespace EditorMaker {

struct Request
{
    const VexaPropertyTreeDelegate *pDelegate = nullptr; ///< takes the commit signals
    QWidget *pParent = nullptr;
    VexaPropertyTreeItem *pItem = nullptr;
    int nColumn = 0;
    QString strNodeName;
};

/// Null for a cell without an editor. The editor is disabled until it is filled.
QWidget *make(const Request &request);

/// Whether the editor is of the kind that the item's present value needs; the representation of an Integer may come
/// after its editor was made.
bool suits(const QWidget *pEditor, const VexaPropertyTreeItem *pItem);

/// Whether a row has an editor in the name column too.
bool hasNameEditor(const VexaPropertyTreeItem *pItem);

/// Whether the row stands for two nodes, each with an editor in its own column.
bool hasTwoNodes(const VexaPropertyTreeItem *pItem);

/// Height in pixels of the editors of one line.
constexpr int EDITOR_HEIGHT = 32;

} // namespace EditorMaker
