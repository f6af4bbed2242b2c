#pragma once

#include <QByteArray>

class FeatureTable;

/// The Chinese texts of the table as JSON: {"Node": {"displayName", "description", "entries": {"Entry": text}}}.
QByteArray writtenTranslations(const FeatureTable &table);
