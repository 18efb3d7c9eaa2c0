# How every target of ours is compiled. Nothing here is global: a target says what it is by
# calling one of these functions.

# zarvo_options(TARGET): the language level, the include root, and warnings as errors.
function(zarvo_options target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /WX)
  else()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                             -Wnon-virtual-dtor -Werror)
  endif()
  if(ZARVO_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=address,undefined
                                             -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    if(ZARVO_LIBFUZZER)
      target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
  endif()
endfunction()

# zarvo_library(TARGET SOURCE...): a window-less library, standard library only.
function(zarvo_library target)
  add_library(${target} STATIC ${ARGN})
  zarvo_options(${target})
endfunction()

# zarvo_qt_options(TARGET): what zarvo_options gives, and the toolkit's own code generators.
function(zarvo_qt_options target)
  zarvo_options(${target})
  set_target_properties(${target} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
  # Strings become translatable or plain on purpose, never by an implicit conversion of bytes.
  target_compile_definitions(${target} PRIVATE QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH)
  target_link_libraries(${target} PUBLIC Qt6::Widgets)
endfunction()

# zarvo_forbid_qt(TARGET...): stops the configuration when a target reaches a Qt library through
# anything it links. Model and engine must stay usable where no toolkit is.
function(zarvo_forbid_qt)
  foreach(target IN LISTS ARGN)
    set(seen)
    set(queue ${target})
    while(queue)
      list(POP_FRONT queue next)
      if(next MATCHES "^Qt[0-9]*::|Qt[0-9](Core|Gui|Widgets)")
        message(FATAL_ERROR "${target} must not link ${next}")
      endif()
      if(TARGET ${next} AND NOT next IN_LIST seen)
        list(APPEND seen ${next})
        get_target_property(links ${next} LINK_LIBRARIES)
        get_target_property(interface_links ${next} INTERFACE_LINK_LIBRARIES)
        foreach(more IN LISTS links interface_links)
          if(more)
            list(APPEND queue ${more})
          endif()
        endforeach()
      endif()
    endwhile()
  endforeach()
endfunction()
