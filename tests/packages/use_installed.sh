# Installs the packages beside it into the system that it runs in, and uses them.
apt-get install -y -q /packages/*.deb cmake g++ make fonts-dejavu-core xvfb xauth xdotool
cd /tmp
objecthost --version
objecthost demo demo
ls -l demo
xvfb-run -a bash -eu -c '
  objecthost-window demo/scene.akd & window=$!
  for _ in $(seq 60); do
    if xdotool search --name scene; then kill $window; exit 0; fi
    sleep 1
  done
  exit 1'
cmake -S /usr/share/doc/akkit-dev/examples/star -B star
cmake --build star
objecthost validate star/Star.so
