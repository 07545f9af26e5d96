# Where PDFium is. It is loaded at run time, on first use; nothing is linked and no header of it is needed.
#
#   PDFIUM_LIBRARY   the shared library: given, or a libpdfium of the system, or the one that LibreOffice brings along
#   PDFium_FOUND     whether there is one on this machine; without it the built library looks for one when it needs it
find_library(PDFIUM_LIBRARY NAMES pdfium pdfiumlo
  HINTS /usr/lib/libreoffice/program /usr/lib64/libreoffice/program /opt/libreoffice/program
  DOC "Shared library of PDFium")

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(PDFium REQUIRED_VARS PDFIUM_LIBRARY)
mark_as_advanced(PDFIUM_LIBRARY)
