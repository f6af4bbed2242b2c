#pragma once

#include <QString>

class QCameraTask;

/// Values of nodes as texts of a feature file, by the tag that the nodes have in the description: Boolean, Integer,
/// IntReg, Enumeration, Float, StringReg. Each needs one access of the node.
namespace PlainValue {

enum class Outcome {
    Done,
    Failed, ///< the device refused; the error says why
    NoMemory, ///< for the record of an enumeration
    OtherType, ///< the tag is none of the six
    NoNumber ///< the text is no number of this type that can be written
};

/// `exact` tells whether the text says all of the value and is read back as it is.
Outcome read(QCameraTask *task, const QString &type, const QString &name, QString *text, int *error,
             bool *exact = nullptr);
Outcome write(QCameraTask *task, const QString &type, const QString &name, const QString &text,
              int *error);

} // namespace PlainValue
