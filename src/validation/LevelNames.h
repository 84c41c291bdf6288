#pragma once

#include <QString>
#include <QVariant>

// The names of the event levels, as the file writer prints them behind each
// event line. Each lookup runs on the level-name table of its factor and
// traps its own errors: a failure shows the error's text with
// " in Find_FERNAME." (the routine's own name) and gives "".

namespace quillon::validation {

// Fertilizer, residue, chemical and tillage levels without a name, or with
// a NULL name, give "-99".
QString Find_FERNAME(const QVariant& level);
QString Find_RESNAME(const QVariant& level);
QString Find_CHNAME(const QVariant& level);
QString Find_TillNAME(const QVariant& level);

// Environment and harvest levels without a name give "", so that their
// lines end with nothing behind the blank.
QString Find_EnvNAME(const QVariant& level);
QString Find_HarNAME(const QVariant& level);

} // namespace quillon::validation
