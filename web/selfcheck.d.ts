// Does this browser give the same bits as every other platform?

/** What zan-selfcheck has found. */
export interface SelfCheck {
  /** Whether every operation gives its golden sum. */
  same: boolean;
  /** One line for a reader. */
  line: string;
  /** How many operations were compared. */
  operations: number;
  /** What the program prints. */
  details: string[];
}

/**
 * Runs the program zan-selfcheck in a worker, which takes a few seconds.
 * @param program  its script and its WebAssembly, for pages that cannot fetch them from the package's folder
 */
export function selfCheck(program?: { script?: string; wasm?: BufferSource }): Promise<SelfCheck>;
