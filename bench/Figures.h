// bench/Figures.h: the figures of each part of the program.
#pragma once

namespace velkor {

void RegisterLayoutFigures();
void RegisterCacheFigures();
void RegisterDrawingFigures();
void RegisterPointerFigures();
void RegisterFilterFigures();
void RegisterExportFigures();
void RegisterPrintFigures();
void RegisterRuleFigures();
void RegisterReadingFigures();
void RegisterSetFigures();
void RegisterSyncFigures();

}  // namespace velkor
