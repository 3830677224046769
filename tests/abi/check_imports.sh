#!/usr/bin/env bash
# The plug-in reads no settings and no files, starts no threads, opens no connections, and of Xerces-C calls only what is
# virtual, since each module may have its own copy: check_imports.sh LIBRARY
set -euo pipefail
imports=$(nm -D --undefined-only "$1" | awk '{print $NF}' | sed 's/@.*//' | sort -u)
grep -q '^_Znwm$' <<<"$imports" || { echo "$1: imports not even operator new"; exit 1; }
grep -q '^_ZN.*11xercesc' <<<"$imports" || { echo "$1: no function that takes a node of a document"; exit 1; }
forbidden='^(secure_)?getenv$|^environ$|^setlocale$|^f?re?open(64)?$|^f?open(64|at)?$|^popen$|^system$|^dlopen$|^fork$'
forbidden+='|^exec[lv]|^posix_spawn|^socket$|^connect$|^getaddrinfo$|^pthread_create$|^thrd_create$'
forbidden+='|^_ZNSt6thread|^_ZNSt13basic_filebuf|^_ZNSt14basic_[io]fstream|^_ZNSt13basic_fstream|^_ZNSt10filesystem'
forbidden+='|^_ZNK?11xercesc'
! grep -E "$forbidden" <<<"$imports"
