// Faults of the file itself, one by each way of building it.
#if defined(MUTANT_UNRESOLVED)
extern int nobodyHasThis();
extern "C" __attribute__((visibility("default"))) int mutantMissing() { return nobodyHasThis(); }
#endif
#if defined(MUTANT_TEXT_RELOCATION)
asm(".text\n.globl mutantTable\nmutantTable: .quad pluginMain\n.previous");
#endif
#if defined(MUTANT_UNIQUE)
asm(".data\n.globl mutantUnique\n.type mutantUnique, @gnu_unique_object\n.size mutantUnique, 8\n"
    "mutantUnique: .quad 1\n.previous");
#endif
#if defined(MUTANT_HELPER)
extern "C" __attribute__((visibility("default"))) int mutantPart() { return 3; }
#endif
#if defined(MUTANT_NEEDS_HELPER)
extern "C" int mutantPart();
extern "C" __attribute__((visibility("default"))) int mutantWhole() { return mutantPart(); }
#endif
