# Where each layer's headers are found, so that the compiler itself refuses an
# include that points up or sideways.
#
# Includes name a header by its folder, as "menu/MenuBuilder.h" or
# "tray/StatusNotifierItem.h". Had a layer's include path been the parent of
# its folder, it would reach every sibling folder too, and a header-only back
# edge (platform including menu, say) would compile without the linker ever
# noticing. So each layer gets an include root of its own in the build tree,
# holding one link: to its own folder. A target then finds its own headers
# and, through the PUBLIC roots of what it links, those of the layers below,
# and nothing else. The roots mirror the source tree (layers/core/menu/menu),
# so tools that filter by "/core/" or "/linux/" still see the headers as ours.
function(quorvane_layer_headers target folder)
    file(RELATIVE_PATH relative ${PROJECT_SOURCE_DIR} ${folder})
    get_filename_component(name ${folder} NAME)
    set(root ${PROJECT_BINARY_DIR}/layers/${relative})
    file(MAKE_DIRECTORY ${root})
    file(CREATE_LINK ${folder} ${root}/${name} SYMBOLIC)
    target_include_directories(${target} PUBLIC ${root})
endfunction()
