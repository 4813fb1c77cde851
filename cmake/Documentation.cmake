# SPDX-License-Identifier: MIT
# The documentation as a reader gets it: the target manual makes docs/ a site in build/.../manual, where MkDocs and its theme
# are installed (tools/prepare.sh has the packages). It is not part of all.
find_program(MKDOCS mkdocs)
if(MKDOCS)
    add_custom_target(manual
        COMMAND ${MKDOCS} build --strict --quiet --clean --config-file ${PROJECT_SOURCE_DIR}/mkdocs.yml
            --site-dir ${PROJECT_BINARY_DIR}/manual
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} # where the pages' examples are looked for
        COMMENT "The manual: ${PROJECT_BINARY_DIR}/manual/index.html" VERBATIM)
endif()
