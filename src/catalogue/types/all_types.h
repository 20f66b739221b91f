#pragma once

#include "list_type.h"

/// Every list type, each defined in the file of its name.
namespace tamarok::catalogue::types {

extern const ListType acl;
extern const ListType akat;
extern const ListType artikel;
extern const ListType bbf;
extern const ListType bbf_plann;
extern const ListType bbfahr;
extern const ListType bbfak;
extern const ListType bbfb;
extern const ListType bbfs;
extern const ListType bbhab;
extern const ListType bbhunde;
extern const ListType bbjagd;
extern const ListType bbjb;
extern const ListType bbklr;
extern const ListType bblag;
extern const ListType bbltn;
extern const ListType bbmap;
extern const ListType bbobj;
extern const ListType bbplan;
extern const ListType bbstrk;
extern const ListType bbtalk;
extern const ListType bbun;
extern const ListType bbvs;
extern const ListType bbwal;
extern const ListType bbwild;
extern const ListType bbzv;
extern const ListType berm;
extern const ListType fhpexp;
extern const ListType kiz;
extern const ListType log;
extern const ListType msch;
extern const ListType mvlose;
extern const ListType personal;
extern const ListType plan;
extern const ListType rj;
extern const ListType sapagruppe;
extern const ListType steh;
extern const ListType transport;
extern const ListType users;
extern const ListType vertrag;
extern const ListType waren;

extern const ListType deductions; ///< the list that no key names

} // namespace tamarok::catalogue::types
