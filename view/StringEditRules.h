#pragma once

class QLineEdit;
class QString;

/// Sets up the line edit of a StringReg node: validator, input method and echo mode by feature name.
void applyStringEditRules(QLineEdit *pEdit, const QString &strNodeName);
