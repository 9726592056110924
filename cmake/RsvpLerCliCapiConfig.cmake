# find_package(RsvpLerCliCapi): the libraries RsvpLer::RsvpLerCliCapi, RsvpLer::RsvpLerState and RsvpLer::RsvpLerPlatform.
# The first is the one to link; it brings the others.
include(${CMAKE_CURRENT_LIST_DIR}/RsvpLerCliCapiTargets.cmake)
