// Runs the program zan-selfcheck in a worker: does this browser give the same bits as every other platform?

const read = async (name, as) => {
  const response = await fetch(new URL(`selfcheck/${name}`, import.meta.url));
  if (!response.ok) throw new Error(`zan: ${response.url}: ${response.status} ${response.statusText}`);
  return response[as]();
};

export async function selfCheck({ script, wasm } = {}) {
  script ??= await read('zan-selfcheck.cjs', 'text');
  wasm ??= await read('zan-selfcheck.wasm', 'arrayBuffer');
  const program = `
    self.Module = {
      lines: [],
      instantiateWasm(imports, done) {
        onmessage = ({ data }) => WebAssembly.instantiate(data, imports).then(({ instance }) => done(instance));
        return {};
      },
      print: (line) => Module.lines.push(line),
      printErr: (line) => Module.lines.push(line),
      onExit: (status) => postMessage({ lines: Module.lines, status }),
    };
    ${script}`;
  const url = URL.createObjectURL(new Blob([program], { type: 'text/javascript' }));
  const worker = new Worker(url);
  try {
    const { lines, status } = await new Promise((resolve, reject) => {
      worker.onmessage = ({ data }) => resolve(data);
      worker.onerror = ({ message }) => reject(new Error(`zan: the self-check did not run: ${message}`));
      worker.postMessage(wasm);
    });
    const counts = /(\d+) of (\d+) operations differ/.exec(lines[0]);
    if (!counts) throw new Error(`zan: the self-check did not run: ${lines[0]}`);
    const [differing, operations] = counts.slice(1).map(Number);
    const same = status === 0;
    const line = same
      ? `This browser gives the same bits: ${operations} of ${operations} operations`
      : `This browser does NOT give the same bits: ${differing} of ${operations} operations differ`;
    return { same, line, operations, details: lines };
  } finally {
    worker.terminate();
    URL.revokeObjectURL(url);
  }
}
