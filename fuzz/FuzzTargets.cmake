# The fuzz preset includes this right after project(). The targets need the product's libraries,
# so fuzz/CMakeLists.txt is read once the top folder has been, leaving the other presets untouched.
cmake_language(DEFER DIRECTORY ${CMAKE_SOURCE_DIR} CALL include ${CMAKE_SOURCE_DIR}/fuzz/CMakeLists.txt)
