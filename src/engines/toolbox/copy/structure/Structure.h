// Tagged structure of copied pages (ISO 32000-2, 14.7): what is read of a source, what a copy does
// with it, and what the target gathers.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_STRUCTURE_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_STRUCTURE_H_

#include "engines/toolbox/copy/structure/SourceStructure.h"
#include "engines/toolbox/copy/structure/StructureCopier.h"
#include "engines/toolbox/copy/structure/TargetStructure.h"

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_STRUCTURE_H_
