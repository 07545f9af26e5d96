// TARNIX_EXPORT marks what libtarnixtools.so exports; everything else in the library is hidden.
//
//   class TARNIX_EXPORT PdfDoc { ... };
//
// A class is marked as a whole, with what the compiler makes of it beside its members (type
// information, which exceptions are caught by, among it). Enumerations and plain structures need no
// mark. A host has no use for the macro: it stands for the one thing here that depends on the
// compiler, GCC or clang.
#ifndef TARNIX_EXPORT_H_
#define TARNIX_EXPORT_H_

#define TARNIX_EXPORT __attribute__((visibility("default")))

#endif  // TARNIX_EXPORT_H_
