// Tells the linker what the page gives to the module (see src/decoder.ts).
mergeInto(LibraryManager.library, {
    corvane_input: function () {},
});
