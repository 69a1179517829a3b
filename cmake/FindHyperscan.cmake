# SPDX-FileCopyrightText: 2026 The Dugwise authors
# SPDX-License-Identifier: GPL-3.0-or-later

# Hyperscan, or Vectorscan: the same interface under the same names.
find_path(Hyperscan_INCLUDE_DIR hs.h PATH_SUFFIXES hs)
find_library(Hyperscan_LIBRARY hs)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Hyperscan REQUIRED_VARS Hyperscan_LIBRARY Hyperscan_INCLUDE_DIR)
if(Hyperscan_FOUND AND NOT TARGET Hyperscan::hs)
  add_library(Hyperscan::hs UNKNOWN IMPORTED)
  set_target_properties(Hyperscan::hs PROPERTIES
    IMPORTED_LOCATION ${Hyperscan_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${Hyperscan_INCLUDE_DIR})
endif()
mark_as_advanced(Hyperscan_INCLUDE_DIR Hyperscan_LIBRARY)
