# Qt's moc for one of our targets, set the same way for each.
#
# moc reads the core's headers too, and Qt 6.4's moc cannot parse libstdc++'s
# <concepts>, which <compare> pulls in under the compiler's predefined macros
# whenever it is the first standard header moc reaches. Without those macros
# moc skips it, and it needs none of them to find our Q_OBJECT classes. Set
# here for every target, so a header's include order never decides whether
# the build works.
function(quorvane_enable_moc target)
    set_target_properties(${target} PROPERTIES AUTOMOC ON AUTOMOC_COMPILER_PREDEFINES OFF)
endfunction()
