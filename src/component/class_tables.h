#pragma once

#include "tamarok/component.h"

/// The classes' tables, each in a file of its own. All are constants, so that their order of
/// initialisation does not matter.
namespace tamarok::component {

extern const ClassInfo commFind;
extern const ClassInfo gridHelp;
extern const ClassInfo cVersion;
extern const ClassInfo commForms;
extern const ClassInfo commAct;
extern const ClassInfo commCSel;
extern const ClassInfo commConv;
extern const ClassInfo commLock;
extern const ClassInfo commSQL;
extern const ClassInfo commModels;
extern const ClassInfo commGet;
extern const ClassInfo commSet;
extern const ClassInfo locService;
extern const ClassInfo mCommModule;

} // namespace tamarok::component
