#pragma once

#include "TranslationModels.h"

#include <optional>

namespace lucentra {

/// Reads a server's list of model files and chooses one complete model per pair: releases before test versions, then the
/// newest version. Records that a desktop program can't use are left out. Nothing in the list is trusted: names,
/// locations, sizes and hashes are checked. The models are sorted by pair. Returns nullopt if the bytes aren't a list of
/// records.
std::optional<QList<OfferedModel>> readModelRegistry(const QByteArray &json);

} // namespace lucentra
