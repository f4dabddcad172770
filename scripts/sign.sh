#!/usr/bin/env bash
# Signs Windows programs, libraries and installers where they lie, and verifies the signatures; does
# nothing when no certificate is given.
#   scripts/sign.sh FILE...
# VELKOR_SIGN_CERTIFICATE and VELKOR_SIGN_KEY name PEM files, or VELKOR_SIGN_PKCS12 a file with both
# (VELKOR_SIGN_PASSWORD_FILE holds the password of either); VELKOR_SIGN_TIMESTAMP is the address of a
# time stamp service; VELKOR_SIGN_ROOTS the certificates to verify against, the system's unless given.
set -euo pipefail

sign=()
if [[ -n ${VELKOR_SIGN_PKCS12:-} ]]; then
  sign=(-pkcs12 "$VELKOR_SIGN_PKCS12")
elif [[ -n ${VELKOR_SIGN_CERTIFICATE:-} && -n ${VELKOR_SIGN_KEY:-} ]]; then
  sign=(-certs "$VELKOR_SIGN_CERTIFICATE" -key "$VELKOR_SIGN_KEY")
elif [[ -n ${VELKOR_SIGN_CERTIFICATE:-}${VELKOR_SIGN_KEY:-} ]]; then
  echo "sign.sh: VELKOR_SIGN_CERTIFICATE and VELKOR_SIGN_KEY belong together" >&2
  exit 1
else
  exit 0
fi
[[ -z ${VELKOR_SIGN_PASSWORD_FILE:-} ]] || sign+=(-readpass "$VELKOR_SIGN_PASSWORD_FILE")
[[ -z ${VELKOR_SIGN_TIMESTAMP:-} ]] || sign+=(-ts "$VELKOR_SIGN_TIMESTAMP")
roots=${VELKOR_SIGN_ROOTS:-/etc/ssl/certs/ca-certificates.crt}

for file in "$@"; do
  rm -f "$file.signed"
  if ! output=$(osslsigncode sign "${sign[@]}" -h sha256 -n "OutlookVelkor year planner" \
    -in "$file" -out "$file.signed" 2>&1 &&
    osslsigncode verify -CAfile "$roots" -in "$file.signed" 2>&1); then
    rm -f "$file.signed"
    echo "sign.sh: $file: $output" >&2
    exit 1
  fi
  mv "$file.signed" "$file"
done
