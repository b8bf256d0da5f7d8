# Compiler settings shared by every target of the project.

# ze_target_defaults(<target>): warnings on, nothing else.
function(ze_target_defaults target)
    target_compile_options(${target} PRIVATE -Wall -Wextra)
endfunction()

if(ZE_SANITIZE)
    # Directory-scoped on purpose: a host that adds us with add_subdirectory keeps its own flags.
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
