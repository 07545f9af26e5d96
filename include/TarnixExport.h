// TARNIX_EXPORT marks what libtarnixtools.so exports; everything else in the library is hidden.
//
//   class TARNIX_EXPORT PdfDoc { ... };
#ifndef TARNIX_EXPORT_H_
#define TARNIX_EXPORT_H_

#define TARNIX_EXPORT __attribute__((visibility("default")))

#endif  // TARNIX_EXPORT_H_
